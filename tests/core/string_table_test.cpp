#include "app/run_time_error.h"
#include "app/string_table.h"
#include "app/utf8.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tollwick {
namespace {

constexpr int kOffsets[] = {
#define TEXT(offset, name, english, swedish) offset,
#include "resources/texts.def"
#undef TEXT
};

std::string_view english(int offset) {
    return StringTable(kEnglish).byOffset(offset);
}
std::string_view swedish(int offset) {
    return StringTable(kSwedish).byOffset(offset);
}

// The number of the error that a lookup ends in, 0 when there is a text.
int errorOf(int lang_base, int offset) {
    try {
        static_cast<void>(StringTable(static_cast<Integer>(lang_base)).byOffset(offset));
        return 0;
    } catch (const RunTimeError& error) {
        return error.number();
    }
}

TEST(StringTable, TextsStandAtTheirOffsets) {
    struct {
        int offset;
        std::string_view english;
        std::string_view swedish;
    } const cases[] = {
        {0, "&Ok", "&Ok"},
        {1, "&Cancel", "&Avbryt"},
        {9, "Yes", "Ja"},
        {10, "No", "Nej"},
        {15, "Ready", "Klar"},
        {50, "Sun", "Sön"},
        {56, "Sat", "Lör"},
        {57, "Jan", "Jan"},
        {68, "Dec", "Dec"},
        {70, "Monday", "Måndag"},
        {76, "Sunday", "Söndag"},
        {77, "Weekdays", "Vardagar"},
        {79, "Every day", "Varje dag"},
        {80, "min", "min"},
        {81, "hour", "tim"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(english(c.offset), c.english);
        EXPECT_EQ(swedish(c.offset), c.swedish);
    }
    EXPECT_EQ(StringTable(kSwedish)(Text::Cancel), "&Avbryt");
}

TEST(StringTable, BothLanguagesHoldEveryTextInItsRange) {
    const auto mnemonics = [](std::string_view text) {
        return std::count(text.begin(), text.end(), '&');
    };
    for (const int offset : kOffsets) {
        SCOPED_TRACE(offset);
        EXPECT_TRUE((offset >= 0 && offset <= 81) || (offset >= 1000 && offset <= 1702) ||
                    (offset >= 2000 && offset <= 2507));
        EXPECT_FALSE(english(offset).empty());
        EXPECT_FALSE(swedish(offset).empty());
        EXPECT_TRUE(isValidUtf8(english(offset)) && isValidUtf8(swedish(offset)));
        EXPECT_EQ(mnemonics(english(offset)), mnemonics(swedish(offset)));
        // Values are put behind such texts.
        EXPECT_EQ(english(offset).ends_with('('), swedish(offset).ends_with('('));
        EXPECT_EQ(english(offset).ends_with(' '), swedish(offset).ends_with(' '));
    }
}

TEST(StringTable, WelcomeStandsInEverySlot) {
    for (const int base : {1000, 4000, 7000, 10000, 13000, 16000, 19000})
        EXPECT_EQ(StringTable(static_cast<Integer>(base)).byOffset(kWelcome), "Welcome") << base;
}

TEST(StringTable, ATextThatIsMissingIsError326) {
    for (const int base : {7000, 10000, 19000, 22000, 32767, -32768, 0})
        EXPECT_EQ(errorOf(base, 0), error_number::ResourceNotFound) << base;
    EXPECT_EQ(errorOf(22000, kWelcome), error_number::ResourceNotFound);
    for (const int offset : {-1, 12, 82, 2999, 6099})
        EXPECT_EQ(errorOf(kEnglish, offset), error_number::ResourceNotFound) << offset;
}

} // namespace
} // namespace tollwick
