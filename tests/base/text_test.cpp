// Texts and the numbers in them: code page, UTF-8, numeric values, the string table.
#include "base/ansi.h"
#include "base/numeric.h"
#include "base/string_table.h"
#include "base/utf8.h"
#include "tests/support/code_page.h"
#include "tests/support/error_of.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace tollwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(Ansi, ConvertsBothWaysAndMakesAQuestionMarkOfWhatTheCodePageLacks) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "another ANSI code page is active";
    EXPECT_EQ(toHex(toAnsi("Åäö é €‚ŠŒž™Ÿ")), "c5e4f620e92080828a8c9e999f");
    EXPECT_EQ(toAnsi("aΩb漢字\xFF"), "a?b???"); // no letter that merely looks alike
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    EXPECT_TRUE(isValidUtf8(fromAnsi(bytes)));
    EXPECT_EQ(toHex(toAnsi(fromAnsi(bytes))), toHex(bytes));
}

TEST(Utf8, TellsWellFormedFromMalformed) {
    for (const char* valid : {"", "7f", "c2 80", "df bf", "e0 a0 80", "ed 9f bf", "ef bf bd",
                              "f0 90 80 80", "f4 8f bf bf"}) {
        EXPECT_TRUE(isValidUtf8(fromHex(valid))) << valid;
        EXPECT_EQ(toLower(fromHex(valid)), fromHex(valid)) << valid;
    }
    // Cut, longer than needed, half of a surrogate pair, beyond the last code point.
    for (const char* invalid :
         {"80", "c3 28", "e2 82", "c0 af", "e0 9f bf", "ed a0 80", "f4 90 80 80", "f5 80 80 80"})
        EXPECT_FALSE(isValidUtf8(fromHex(invalid))) << invalid;
}

TEST(Numeric, ReadsTheNumberAtTheHeadOfAText) {
    const std::string zeros(400, '0');
    // clang-format off
    const std::pair<std::string, double> cases[] = {
        {"", 0}, {"x12", 0}, {"  12 ", 12}, {"\t12", 0}, {"+4", 4}, {"+-3", 0}, {"-.5", -0.5},
        {"5.", 5}, {".", 0}, {"-", 0}, {"1,5", 1}, {"10.0.0.1x", 10}, {"2E-1x", 0.2}, {"7e+", 7},
        {"-nan", 0}, {"0x1F", 0}, {"1e-999", 0}, {"1e999", kInfinity},
        // Out of a number's range in other ways than by the sign of the exponent.
        {"0." + zeros + "1", 0}, {"-1" + zeros + "e-5", -kInfinity},
        {"1e-" + zeros + "9" + zeros, 0}};
    // clang-format on
    for (const auto& [text, value] : cases)
        EXPECT_EQ(numericValue(text), value) << '"' << text << '"';
    EXPECT_EQ(groupedNumber(-999), "-999");
    EXPECT_EQ(groupedNumber(-1'234'567), "-1,234,567");
}

TEST(Numeric, RoundsHalvesToTheEvenNeighbourAndOverflowsBeyondTheRange) {
    const std::pair<double, int> cases[] = {{0.5, 0},   {1.5, 2},         {2.50001, 3},
                                            {-2.5, -2}, {32767.4, 32767}, {-32768.5, -32768}};
    for (const auto& [value, rounded] : cases)
        EXPECT_EQ(toInteger(value), rounded) << value;
    EXPECT_EQ(toLong(2147483646.5), 2147483646);
    EXPECT_EQ(toLong(-2147483648.5), -2147483647 - 1);
    for (const double value : {32767.5, -32768.51, kInfinity, -kInfinity, kNan})
        EXPECT_EQ(errorOf([&] { return toInteger(value); }), error_number::Overflow) << value;
    for (const double value : {2147483647.5, -2147483648.51, 1e300, kNan})
        EXPECT_EQ(errorOf([&] { return toLong(value); }), error_number::Overflow) << value;
}

constexpr int kOffsets[] = {
#define TEXT(offset, name, english, swedish) offset,
#include "resources/texts.def"
#undef TEXT
};

std::string_view text(int base, int offset) {
    return StringTable(static_cast<Integer>(base)).byOffset(offset);
}

TEST(StringTable, BothLanguagesHoldEveryTextInItsRange) {
    for (const int offset : kOffsets) {
        SCOPED_TRACE(offset);
        EXPECT_TRUE((offset >= 0 && offset <= 81) || (offset >= 1000 && offset <= 1702) ||
                    (offset >= 2000 && offset <= 2507) || (offset >= 2900 && offset <= 2999));
        const std::string_view english = text(kEnglish, offset);
        const std::string_view swedish = text(kSwedish, offset);
        EXPECT_FALSE(english.empty() || swedish.empty());
        EXPECT_TRUE(isValidUtf8(english) && isValidUtf8(swedish));
        EXPECT_EQ(std::ranges::count(english, '&'), std::ranges::count(swedish, '&'));
        // Values are put behind such texts.
        EXPECT_EQ(english.ends_with('('), swedish.ends_with('('));
        EXPECT_EQ(english.ends_with(' '), swedish.ends_with(' '));
    }
    EXPECT_EQ(text(kEnglish, 0), "&Ok");
    EXPECT_EQ(text(kSwedish, 56), "Lör");
    EXPECT_EQ(text(kEnglish, 76), "Sunday");
}

TEST(StringTable, ATextThatIsMissingIsError326SaveForWelcomeInEverySlot) {
    for (const int base : {1000, 4000, 7000, 10000, 13000, 16000, 19000})
        EXPECT_EQ(text(base, kWelcome), "Welcome") << base;
    const std::pair<int, int> missing[] = {
        {7000, 0},      {-32768, 0},       {kEnglish, -1},         {kEnglish, 12},
        {kSwedish, 82}, {22000, kWelcome}, {kEnglish, 2147483647}, {kEnglish, -2147483647}};
    for (const auto& [base, offset] : missing)
        EXPECT_EQ(errorOf([&] { return text(base, offset); }), 326) << base << ' ' << offset;
}

} // namespace
} // namespace tollwick
