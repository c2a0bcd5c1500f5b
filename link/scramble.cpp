#include "link/scramble.h"

#include <array>
#include <chrono>
#include <cmath>
#include <random>

namespace tollwick {
namespace {

constexpr std::string_view kNoKey{"\0", 1}; // leaves the chained sum as it is

constexpr std::uint8_t kNoDigit = 0xFF;

constexpr auto kDigitPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {"0123456789ABCDEF"[i >> 4], "0123456789ABCDEF"[i & 15]};
    return pairs;
}();

constexpr auto kDigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::uint8_t i = 0; i < 10; ++i)
        values[static_cast<std::size_t>('0' + i)] = i;
    for (std::uint8_t i = 0; i < 6; ++i) {
        values[static_cast<std::size_t>('A' + i)] = static_cast<std::uint8_t>(10 + i);
        values[static_cast<std::size_t>('a' + i)] = static_cast<std::uint8_t>(10 + i);
    }
    return values;
}();

std::uint8_t digitValue(char c) {
    return kDigitValues[static_cast<unsigned char>(c)];
}

// The value of a pair that is not simply two digits.
std::uint8_t oddPairValue(char first, char second) {
    if (first == ' ')
        first = second, second = ' ';
    const std::uint8_t value = digitValue(first);
    return value != kNoDigit && second == ' ' ? value : 0;
}

std::uint8_t pairValue(char first, char second) {
    const std::uint8_t high = digitValue(first);
    const std::uint8_t low = digitValue(second);
    if (high == kNoDigit || low == kNoDigit) [[unlikely]]
        return oddPairValue(first, second);
    return static_cast<std::uint8_t>(high << 4 | low);
}

} // namespace

std::string scramble(std::string_view key, std::string_view plain, std::uint8_t start) {
    if (key.empty())
        key = kNoKey;
    std::string scrambled(2 + 2 * plain.size(), '\0');
    char* out = scrambled.data();
    const auto append = [&out](std::uint8_t value) {
        *out++ = kDigitPairs[value][0];
        *out++ = kDigitPairs[value][1];
    };
    append(start);
    std::uint8_t previous = start;
    std::size_t cursor = 0;
    for (const char c : plain) {
        previous = static_cast<std::uint8_t>((static_cast<unsigned char>(c) + previous) ^
                                             static_cast<unsigned char>(key[cursor]));
        append(previous);
        if (++cursor == key.size())
            cursor = 0;
    }
    return scrambled;
}

std::string unscramble(std::string_view key, std::string_view scrambled) {
    if (scrambled.size() <= 2)
        return {};
    if (key.empty())
        key = kNoKey;
    std::uint8_t previous = pairValue(scrambled[0], scrambled[1]);
    scrambled.remove_prefix(2);
    std::string plain((scrambled.size() + 1) / 2, '\0');
    std::size_t cursor = 0;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const bool is_single = 2 * i + 1 == scrambled.size();
        const std::uint8_t value =
            pairValue(scrambled[2 * i], is_single ? ' ' : scrambled[2 * i + 1]);
        plain[i] = static_cast<char>((value ^ static_cast<unsigned char>(key[cursor])) - previous);
        previous = value;
        if (++cursor == key.size())
            cursor = 0;
    }
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
