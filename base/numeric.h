// Reading numbers from texts and rounding them, by the rules that every field of the console
// follows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tollwick {

// The number at the head of the text: leading blanks are skipped, reading stops at the first
// character that cannot continue a number, and a text without one counts as 0.
double numericValue(std::string_view text);

// Rounded to the nearest whole number, halves to the even neighbour. Throws RunTimeError 6
// (overflow) when the result does not fit.
std::int16_t toInteger(double value);
std::int32_t toLong(double value);

// "###,###,##0": decimal with a comma between groups of three digits, in every language.
std::string groupedNumber(std::int64_t value);

} // namespace tollwick
