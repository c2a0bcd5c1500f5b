#include "app/numeric.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tollwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Numeric, ReadsTheNumberAtTheHeadOfAText) {
    // clang-format off
    const std::pair<std::string_view, double> cases[] = {
        {"", 0}, {"   ", 0}, {"abc", 0}, {"x12", 0}, {"542", 542}, {"  12 ", 12}, {"\t12", 0},
        {"-3", -3}, {"+4", 4}, {"--3", 0}, {"+-3", 0}, {"1.5", 1.5}, {".5", 0.5}, {"-.5", -0.5},
        {"5.", 5}, {".", 0}, {"-", 0}, {"1,5", 1}, {"10.0.0.1x", 10}, {"1e3", 1000}, {"2E-1x", 0.2},
        {"7e", 7}, {"7e+", 7}, {"inf", 0}, {"-nan", 0}, {"0x1F", 0}, {"007", 7}, {"1e-999", 0},
        {"1e999", kInfinity}, {"-1e999", -kInfinity}, {"99999999999", 99999999999.0}};
    // clang-format on
    for (const auto& [text, value] : cases)
        EXPECT_EQ(numericValue(text), value) << '"' << text << '"';
    // Out of a number's range in other ways than by the sign of the exponent.
    const std::string zeros(400, '0');
    EXPECT_EQ(numericValue("0." + zeros + "1"), 0);
    EXPECT_EQ(numericValue("-1" + zeros + "e-5"), -kInfinity);
    EXPECT_EQ(numericValue("1e-" + zeros + "9" + zeros), 0);
}

TEST(Numeric, RoundsHalvesToTheEvenNeighbourAndOverflowsBeyondTheRange) {
    const std::pair<double, int> cases[] = {
        {0.5, 0},   {1.5, 2},   {2.5, 2},   {2.50001, 3},     {-0.5, 0},
        {-1.5, -2}, {-2.5, -2}, {-2.6, -3}, {32767.4, 32767}, {-32768.5, -32768}};
    for (const auto& [value, rounded] : cases) {
        EXPECT_EQ(toInteger(value), rounded) << value;
        EXPECT_EQ(toLong(value), rounded) << value;
    }
    EXPECT_EQ(toLong(2147483646.5), 2147483646);
    EXPECT_EQ(toLong(-2147483648.5), -2147483647 - 1);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double value : {32767.5, 32768.0, -32768.51, kInfinity, -kInfinity, nan})
        EXPECT_EQ(errorOf([&] { return toInteger(value); }), error_number::Overflow) << value;
    for (const double value : {2147483647.5, 2147483648.0, -2147483648.51, 1e300, nan})
        EXPECT_EQ(errorOf([&] { return toLong(value); }), error_number::Overflow) << value;
}

TEST(Numeric, GroupsDigitsByThree) {
    const std::pair<std::int64_t, std::string_view> cases[] = {
        {0, "0"},
        {999, "999"},
        {1000, "1,000"},
        {-999, "-999"},
        {-1000, "-1,000"},
        {123456, "123,456"},
        {1234567, "1,234,567"},
        {std::numeric_limits<std::int64_t>::min(), "-9,223,372,036,854,775,808"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(groupedNumber(value), text);
}

} // namespace
} // namespace tollwick
