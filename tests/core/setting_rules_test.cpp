#include "app/run_time_error.h"
#include "tests/support/recording_prompter.h"
#include "ui/dialogs/setting_rules.h"
#include "ui/main/node_keys.h"
#include "ui/main/setting_rows.h"

#include <gtest/gtest.h>

#include <limits>

namespace tollwick {
namespace {

TEST(SettingRules, AnIpNumberHasFourPartsAndTheThirdIsNotExamined) {
    struct {
        std::string_view text;
        bool accepted;
    } const cases[] = {
        {"192.168.1.1", true},
        {"0.0.0.0", true},
        {"255.255.255.255", true},
        {"1..2.3", true}, // an empty part is 0
        {"...", true},
        {"10.0.0.1x", true}, // letters behind a number do not count
        {"a.b.c.d", true},
        {" 1.2.3. 4 ", true},
        {"10.0.0.-0", true},
        {"", false},
        {"1", false},
        {"1.2", false},
        {"1.2.3", false},
        {"1.2.3.4.5", false},
        {"1.2.3.4.", false},
        {"....", false},
        {"256.1.1.1", false},
        {"-1.1.1.1", false},
        {"1.1.1.256", false},
        {"1.1.1.-1", false},
        // The third part: neither its range nor 16 bits matter.
        {"1.2.300.4", true},
        {"1.2.x.4", true},
        {"1.2.99999.4", true},
        // The second part is read with the length of the third.
        {"10.200.3.4", true},
        {"10.999.3.4", true},  // 9
        {"10.999.30.4", true}, // 99
        {"10.999.300.4", false},
        {"10.256..4", true},   // no character at all
        {"10.256.30.4", true}, // 25
        {"10.256.300.4", false},
        {"10.2.3000.4", true}, // "2.30"
        {"10.-1.3.4", true},   // "-"
        {"10.-1.30.4", false},
        {"10.255.60000.4", false}, // "255.6" rounds to 256
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        RecordingPrompter prompter;
        if (!c.accepted)
            prompter.expectBeep();
        EXPECT_EQ(InvalidIpNumber(c.text, prompter), !c.accepted);
    }
}

TEST(SettingRules, APartOfAnIpNumberThatExceeds16BitsIsError6) {
    for (const std::string_view text : {"32768.1.1.1", "1.40000.11111.1", "1.1.1.99999999999",
                                        "-32769.1.1.1", "1e9.1.1.1", "300.1.1.32768"}) {
        RecordingPrompter prompter;
        try {
            InvalidIpNumber(text, prompter);
            ADD_FAILURE() << text;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), error_number::Overflow) << text;
        }
    }
    // Too large for a byte, but not for 16 bits; and a wrong number of dots is seen first.
    for (const std::string_view text : {"32767.1.1.1", "99999.1.1", "99999.1.1.1.1"}) {
        RecordingPrompter prompter;
        prompter.expectBeep();
        EXPECT_TRUE(InvalidIpNumber(text, prompter)) << text;
    }
}

TEST(SettingRules, PortsGoFrom1To32766) {
    struct {
        std::string_view text;
        std::optional<Long> port;
    } const cases[] = {
        {"1", 1},      {"542", 542},  {"32766", 32766},    {" 25 ", 25},       {"80abc", 80},
        {"1e3", 1000}, {"0.4", 0}, // above 0 before it is rounded
        {"0.5", 0},    {"1.5", 2},    {"2.5", 2},          {"32765.5", 32766}, {"", {}},
        {"abc", {}},   {"0", {}},     {"-1", {}},          {"-0.4", {}},       {"32766.1", {}},
        {"32767", {}}, {"65535", {}}, {"99999999999", {}}, {"1e999", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(portNumber(c.text), c.port) << '"' << c.text << '"';
}

TEST(SettingRules, CommandsHoldNoPathAndNoWildcard) {
    for (const std::string_view command :
         {"", "run.bat", "run.bat -a \"b c\" 'd' %1 & e", "kör.bat"})
        EXPECT_FALSE(ContainsAnyChar(command, kCommandCharacters)) << command;
    for (const std::string_view command :
         {"c:\\run.bat", "c:run", "\\run", "a/b", "a*", "?", "run <in", "run >out", "x|y"})
        EXPECT_TRUE(ContainsAnyChar(command, kCommandCharacters)) << command;
    EXPECT_FALSE(ContainsAnyChar("anything", ""));
}

TEST(SettingRules, NumbersBecomeTextsAndZeroAnEmptyOne) {
    EXPECT_EQ(NumberToText(0), "");
    EXPECT_EQ(NumberToText(7), "7");
    EXPECT_EQ(NumberToText(-7), "-7");
    EXPECT_EQ(NumberToText(std::numeric_limits<Integer>::max()), "32767");
    EXPECT_EQ(NumberToText(std::numeric_limits<Integer>::min()), "-32768");
}

TEST(SettingRules, AnyYesBecomesNo) {
    EXPECT_EQ(flipped(0), -1);
    for (const Integer yes : {Integer{-1}, Integer{1}, Integer{255}})
        EXPECT_EQ(flipped(yes), 0);
}

TEST(SettingRules, EveryAddressRowHasItsRule) {
    std::size_t rows = 0;
    for (const SettingRow& row : settingRows()) {
        const bool is_address = row.node_key == node::Admin || row.node_key == node::SmtpServer ||
                                row.node_key == node::SmtpForward;
        EXPECT_EQ(findAddressRule(row.key) != nullptr, is_address) << row.key;
        rows += is_address;
    }
    EXPECT_EQ(rows, addressRules().size());
    EXPECT_EQ(findAddressRule("AdminIp"), nullptr); // keys go by case
}

} // namespace
} // namespace tollwick
