#include "app/string_table.h"
#include "app/utf8.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tollwick {
namespace {

constexpr int kOffsets[] = {
#define TEXT(offset, name, english, swedish) offset,
#include "resources/texts.def"
#undef TEXT
};

std::string_view text(int base, int offset) {
    return StringTable(static_cast<Integer>(base)).byOffset(offset);
}

TEST(StringTable, TextsStandAtTheirOffsets) {
    // clang-format off
    const std::tuple<int, std::string_view, std::string_view> cases[] = {
        {0, "&Ok", "&Ok"}, {1, "&Cancel", "&Avbryt"}, {9, "Yes", "Ja"}, {10, "No", "Nej"},
        {15, "Ready", "Klar"}, {50, "Sun", "Sön"}, {56, "Sat", "Lör"}, {57, "Jan", "Jan"},
        {68, "Dec", "Dec"}, {70, "Monday", "Måndag"}, {76, "Sunday", "Söndag"},
        {77, "Weekdays", "Vardagar"}, {79, "Every day", "Varje dag"}, {80, "min", "min"},
        {81, "hour", "tim"}};
    // clang-format on
    for (const auto& [offset, english, swedish] : cases) {
        EXPECT_EQ(text(kEnglish, offset), english);
        EXPECT_EQ(text(kSwedish, offset), swedish);
    }
    EXPECT_EQ(StringTable(kSwedish)(Text::Cancel), "&Avbryt");
}

TEST(StringTable, BothLanguagesHoldEveryTextInItsRange) {
    for (const int offset : kOffsets) {
        SCOPED_TRACE(offset);
        EXPECT_TRUE((offset >= 0 && offset <= 81) || (offset >= 1000 && offset <= 1702) ||
                    (offset >= 2000 && offset <= 2507));
        const std::string_view english = text(kEnglish, offset);
        const std::string_view swedish = text(kSwedish, offset);
        EXPECT_FALSE(english.empty() || swedish.empty());
        EXPECT_TRUE(isValidUtf8(english) && isValidUtf8(swedish));
        EXPECT_EQ(std::ranges::count(english, '&'), std::ranges::count(swedish, '&'));
        // Values are put behind such texts.
        EXPECT_EQ(english.ends_with('('), swedish.ends_with('('));
        EXPECT_EQ(english.ends_with(' '), swedish.ends_with(' '));
    }
}

TEST(StringTable, ATextThatIsMissingIsError326SaveForWelcomeInEverySlot) {
    for (const int base : {1000, 4000, 7000, 10000, 13000, 16000, 19000})
        EXPECT_EQ(text(base, kWelcome), "Welcome") << base;
    const auto error = [](int base, int offset) {
        return errorOf([&] { return text(base, offset); });
    };
    for (const int base : {7000, 10000, 19000, 22000, 32767, -32768, 0})
        EXPECT_EQ(error(base, 0), 326) << base;
    EXPECT_EQ(error(22000, kWelcome), 326);
    for (const int offset : {-1, 12, 82, 2999, 6099, 2147483647, -2147483647})
        EXPECT_EQ(error(kEnglish, offset), 326) << offset;
}

} // namespace
} // namespace tollwick
