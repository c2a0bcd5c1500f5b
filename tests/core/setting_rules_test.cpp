#include "tests/support/error_of.h"
#include "tests/support/recording_prompter.h"
#include "ui/dialogs/setting_rules.h"
#include "ui/main/node_keys.h"
#include "ui/main/setting_rows.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

TEST(SettingRules, AnIpNumberHasFourPartsAndTheThirdIsNotExamined) {
    const auto accepts = [](std::string_view text, bool accepted) {
        RecordingPrompter prompter;
        if (!accepted)
            prompter.expectBeep();
        EXPECT_EQ(InvalidIpNumber(text, prompter), !accepted) << text;
    };
    for (const char* text :
         {"192.168.1.1", "0.0.0.0", "255.255.255.255",
          // An empty part is 0, and letters behind a number do not count.
          "1..2.3", "...", "10.0.0.1x", "a.b.c.d", " 1.2.3. 4 ", "10.0.0.-0",
          // The third part: neither its range nor 16 bits matter.
          "1.2.300.4", "1.2.x.4", "1.2.99999.4",
          // The second part is read with the length of the third: 200, 9, 99, none, 25, 2.30, -.
          "10.200.3.4", "10.999.3.4", "10.999.30.4", "10.256..4", "10.256.30.4", "10.2.3000.4",
          "10.-1.3.4"})
        accepts(text, true);
    for (const char* text :
         {"", "1", "1.2", "1.2.3", "1.2.3.4.5", "1.2.3.4.", "....", "256.1.1.1", "-1.1.1.1",
          "1.1.1.256", "1.1.1.-1", "10.999.300.4", "10.256.300.4", "10.-1.30.4",
          "10.255.60000.4", // "255.6" rounds to 256
          // Too large for a byte, but not for 16 bits; and a wrong number of dots is seen first.
          "32767.1.1.1", "99999.1.1", "99999.1.1.1.1"})
        accepts(text, false);
    for (const char* text : {"32768.1.1.1", "1.40000.11111.1", "1.1.1.99999999999", "-32769.1.1.1",
                             "1e9.1.1.1", "300.1.1.32768"}) {
        RecordingPrompter prompter;
        EXPECT_EQ(errorOf([&] { return InvalidIpNumber(text, prompter); }), error_number::Overflow)
            << text;
    }
}

TEST(SettingRules, PortsGoFrom1To32766) {
    // clang-format off
    const std::pair<std::string_view, std::optional<Long>> cases[] = {
        {"1", 1}, {"542", 542}, {"32766", 32766}, {" 25 ", 25}, {"80abc", 80}, {"1e3", 1000},
        {"0.4", 0}, // above 0 before it is rounded
        {"0.5", 0}, {"1.5", 2}, {"2.5", 2}, {"32765.5", 32766}, {"", {}}, {"abc", {}}, {"0", {}},
        {"-1", {}}, {"-0.4", {}}, {"32766.1", {}}, {"32767", {}}, {"99999999999", {}},
        {"1e999", {}}};
    // clang-format on
    for (const auto& [text, port] : cases)
        EXPECT_EQ(portNumber(text), port) << '"' << text << '"';
}

TEST(SettingRules, CommandsHoldNoPathAndNoWildcard) {
    for (const char* command : {"", "run.bat", "run.bat -a \"b c\" 'd' %1 & e", "kör.bat"})
        EXPECT_FALSE(ContainsAnyChar(command, kCommandCharacters)) << command;
    for (const char* command :
         {"c:\\run.bat", "c:run", "\\run", "a/b", "a*", "?", "run <in", "run >out", "x|y"})
        EXPECT_TRUE(ContainsAnyChar(command, kCommandCharacters)) << command;
}

TEST(SettingRules, ZeroBecomesAnEmptyTextAndAnyYesBecomesNo) {
    EXPECT_EQ(NumberToText(0), "");
    EXPECT_EQ(NumberToText(32767), "32767");
    EXPECT_EQ(NumberToText(-7), "-7");
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
