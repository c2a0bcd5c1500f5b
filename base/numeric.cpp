#include "base/numeric.h"

#include "base/run_time_error.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace tollwick {
namespace {

template <class Number>
Number rounded(double value) {
    const double nearest = std::nearbyint(value);
    if (!(nearest >= std::numeric_limits<Number>::min() &&
          nearest <= std::numeric_limits<Number>::max()))
        throw RunTimeError(error_number::Overflow);
    return static_cast<Number>(nearest);
}

// Whether a number without a sign, which is no 0, is below 1.
bool isSmall(std::string_view number) {
    const std::size_t mantissa = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), mantissa);
    const double whole_digits =
        static_cast<double>(point) - static_cast<double>(number.find_first_of("123456789"));
    const double exponent = numericValue(number.substr(std::min(mantissa + 1, number.size())));
    return whole_digits + exponent <= 0;
}

} // namespace

double numericValue(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    // Keeps words such as "inf" and a second sign from being read.
    if (text.empty() || (text.front() != '.' && (text.front() < '0' || text.front() > '9')))
        return 0;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range)
        value = isSmall(text.substr(0, end - text.data()))
                    ? 0
                    : std::numeric_limits<double>::infinity();
    if (error == std::errc::invalid_argument)
        return 0;
    return negative ? -value : value;
}

std::int16_t toInteger(double value) {
    return rounded<std::int16_t>(value);
}

std::int32_t toLong(double value) {
    return rounded<std::int32_t>(value);
}

std::string groupedNumber(std::int64_t value) {
    std::string digits = std::to_string(value);
    const std::size_t first = value < 0 ? 1 : 0;
    for (std::size_t i = digits.size(); i > first + 3; i -= 3)
        digits.insert(i - 3, 1, ',');
    return digits;
}

} // namespace tollwick
