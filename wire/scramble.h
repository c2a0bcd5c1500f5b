// The scrambling of lines and host passwords. It hides text from casual reading and is no
// encryption.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tollwick {

// Keys the three passwords of a host record; ANSI bytes, 47 of them.
inline constexpr std::string_view HostPasswordKey =
    "q4m\xB4!kr3..-p.618\xA4(%w27bh41?~+?/cc572t-.xe-.jvhk";
static_assert(HostPasswordKey.size() == 47);

// `plain` and `key` are ANSI bytes; the result is 2 + 2 x length upper-case hexadecimal digits,
// headed by `start`, which may be any value from 1 to 255.
std::string scramble(std::string_view key, std::string_view plain, std::uint8_t start);

// The plain bytes of a scrambled text. Blanks around a digit are ignored, a pair that is no number
// counts as 0, a single last digit counts as a value of its own.
std::string unscramble(std::string_view key, std::string_view scrambled);

// A start value from 1 to 255, drawn from a generator that is seeded from the clock.
std::uint8_t randomStart();

// Mode "E" (or "e") scrambles with a random start value, "D" (or "d") unscrambles, any other mode
// gives an empty text.
std::string ScrambleField(std::string_view mode, std::string_view key, std::string_view text);

} // namespace tollwick
