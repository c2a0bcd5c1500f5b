#include "wire/scramble.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstring>
#include <random>

namespace tollwick {
namespace {

constexpr std::string_view kNoKey{"\0", 1}; // leaves the chained sum as it is

constexpr auto kDigitPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {"0123456789ABCDEF"[i >> 4], "0123456789ABCDEF"[i & 15]};
    return pairs;
}();

// The values of a first and of a second digit; what is no digit has a bit beyond a byte.
struct DigitValues {
    std::array<std::uint16_t, 256> high{};
    std::array<std::uint16_t, 256> low{};
};
constexpr std::uint16_t kNoDigit = 0x100;

constexpr DigitValues kDigits = [] {
    DigitValues values;
    values.high.fill(kNoDigit);
    values.low.fill(kNoDigit);
    const auto set = [&](char digit, unsigned value) {
        values.high[static_cast<unsigned char>(digit)] = static_cast<std::uint16_t>(value << 4);
        values.low[static_cast<unsigned char>(digit)] = static_cast<std::uint16_t>(value);
    };
    for (unsigned i = 0; i < 16; ++i) {
        set("0123456789ABCDEF"[i], i);
        set("0123456789abcdef"[i], i);
    }
    return values;
}();

// The value of a pair that is not simply two digits.
unsigned oddPairValue(char first, char second) {
    if (first == ' ')
        first = second, second = ' ';
    const unsigned value = kDigits.low[static_cast<unsigned char>(first)];
    return value != kNoDigit && second == ' ' ? value : 0;
}

unsigned pairValue(char first, char second) {
    const unsigned value = kDigits.high[static_cast<unsigned char>(first)] |
                           kDigits.low[static_cast<unsigned char>(second)];
    return value < kNoDigit ? value : oddPairValue(first, second);
}

} // namespace

// Both functions take the text in runs as long as the key, and keep the byte before in a whole
// word, of which only the low byte counts: each byte waits for the one before, so what is done
// there is what they cost.

std::string scramble(std::string_view key, std::string_view plain, std::uint8_t start) {
    if (key.empty())
        key = kNoKey;
    std::string scrambled(2 + 2 * plain.size(), '\0');
    char* out = scrambled.data();
    const auto append = [&out](unsigned value) {
        std::memcpy(out, kDigitPairs[value & 0xFF].data(), 2);
        out += 2;
    };
    append(start);
    unsigned previous = start;
    while (!plain.empty()) {
        const std::size_t run = std::min(plain.size(), key.size());
        for (std::size_t i = 0; i < run; ++i) {
            previous = (previous + static_cast<unsigned char>(plain[i])) ^
                       static_cast<unsigned char>(key[i]);
            append(previous);
        }
        plain.remove_prefix(run);
    }
    return scrambled;
}

std::string unscramble(std::string_view key, std::string_view scrambled) {
    if (scrambled.size() <= 2)
        return {};
    if (key.empty())
        key = kNoKey;
    unsigned previous = pairValue(scrambled[0], scrambled[1]);
    scrambled.remove_prefix(2);
    std::string plain((scrambled.size() + 1) / 2, '\0');
    char* out = plain.data();
    std::size_t cursor = 0;
    while (scrambled.size() >= 2) {
        const std::size_t run = std::min(scrambled.size() / 2, key.size());
        for (std::size_t i = 0; i < run; ++i) {
            const unsigned value = pairValue(scrambled[2 * i], scrambled[2 * i + 1]);
            *out++ = static_cast<char>((value ^ static_cast<unsigned char>(key[i])) - previous);
            previous = value;
        }
        scrambled.remove_prefix(2 * run);
        cursor = run % key.size();
    }
    if (!scrambled.empty()) // a single last digit
        *out = static_cast<char>(
            (pairValue(scrambled[0], ' ') ^ static_cast<unsigned char>(key[cursor])) - previous);
    return plain;
}

std::uint8_t randomStart() {
    thread_local std::minstd_rand generator(
        static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
    const double drawn = std::uniform_real_distribution<double>(0.0, 1.0)(generator);
    return static_cast<std::uint8_t>(std::lrint(drawn * 10000) % 255 + 1);
}

std::string ScrambleField(std::string_view mode, std::string_view key, std::string_view text) {
    if (mode == "E" || mode == "e")
        return scramble(key, text, randomStart());
    if (mode == "D" || mode == "d")
        return unscramble(key, text);
    return {};
}

} // namespace tollwick
