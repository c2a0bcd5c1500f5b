#include "tests/support/error_of.h"
#include "tests/support/recording_prompter.h"
#include "ui/dialogs/setting_rules.h"
#include "ui/main/node_keys.h"
#include "ui/main/setting_rows.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

TEST(SettingRules, AnIpNumberHasFourPartsAndTheThirdIsNotExamined) {
    RecordingPrompter prompter;
    for (const char* text :
         {"0.0.0.0", "255.255.255.255", "10.0.0.1x", "a.b.c.d", " 1.2.3. 4 ", "...",
          // The third part: neither its range nor 16 bits matter.
          "1.2.300.4", "1.2.99999.4",
          // The second part is read with the length of the third: 99, none, 25, 2.30, -.
          "10.999.30.4", "10.256..4", "10.256.30.4", "10.2.3000.4", "10.-1.3.4"})
        EXPECT_FALSE(InvalidIpNumber(text, prompter)) << text;
    for (const char* text :
         {"", "1.2.3", "1.2.3.4.5", "256.1.1.1", "-1.1.1.1", "1.1.1.256", "1.1.1.-1",
          "10.256.300.4", "10.-1.30.4", "10.255.60000.4", // "255.6" rounds to 256
          // Too large for a byte, but not for 16 bits; and a wrong number of dots is seen first.
          "32767.1.1.1", "99999.1.1"}) {
        prompter.expectBeep();
        EXPECT_TRUE(InvalidIpNumber(text, prompter)) << text;
        EXPECT_TRUE(prompter.done()) << text;
    }
    for (const char* text : {"32768.1.1.1", "1.40000.11111.1", "300.1.1.-32769"})
        EXPECT_EQ(errorOf([&] { return InvalidIpNumber(text, prompter); }), error_number::Overflow);
}

TEST(SettingRules, PortsGoFrom1To32766) {
    const std::pair<std::string_view, std::optional<Long>> cases[] = {
        {"1", 1},         {" 80abc", 80},  {"0.4", 0}, {"2.5", 2},   {"32765.5", 32766},
        {"32766", 32766}, {"32766.1", {}}, {"", {}},   {"-0.4", {}}, {"1e999", {}}};
    for (const auto& [text, port] : cases)
        EXPECT_EQ(portNumber(text), port) << '"' << text << '"';
}

TEST(SettingRules, CommandsHoldNoPathAndNoWildcard) {
    EXPECT_FALSE(ContainsAnyChar("kör.bat -a \"b c\" 'd' %1 & e", kCommandCharacters));
    for (const char* command : {"c:run", "\\run", "a/b", "a*", "?", "run <in", "run >out", "x|y"})
        EXPECT_TRUE(ContainsAnyChar(command, kCommandCharacters)) << command;
}

TEST(SettingRules, ZeroBecomesAnEmptyTextAnyYesBecomesNoAndEveryAddressHasItsRule) {
    EXPECT_EQ(NumberToText(0) + NumberToText(-7), "-7");
    EXPECT_EQ(flipped(0), -1);
    EXPECT_EQ(flipped(255), 0);
    for (const SettingRow& row : settingRows()) {
        const bool is_address = row.node_key == node::Admin || row.node_key.starts_with("smtp");
        EXPECT_EQ(findAddressRule(row.key) != nullptr, is_address) << row.key;
    }
}

} // namespace
} // namespace tollwick
