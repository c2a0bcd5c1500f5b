#include "app/numeric.h"

#include "app/run_time_error.h"

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
    if (error == std::errc::result_out_of_range) {
        // The sign is gone, so that a "-" is the exponent's: too close to 0, and not too large.
        const bool is_tiny = text.substr(0, end - text.data()).find('-') != std::string_view::npos;
        value = is_tiny ? 0 : std::numeric_limits<double>::infinity();
    }
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
