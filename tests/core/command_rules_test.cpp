#include "ui/main/command_rules.h"
#include "ui/main/node_keys.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

// One letter per item that is enabled: the Tools menu's Add, Delete, Properties, Toggle, Open,
// Refresh and Cancel; then, in small letters, the toolbar's add schedule, add host, delete and
// properties.
std::string enabled(const Selection& selection) {
    std::string letters;
    const EnableFlags flags = enableFlags(selection);
    for (std::size_t i = 0; i < flags.size(); ++i)
        if (flags[i] == kOn)
            letters += "ADPTORCshdp"[i];
    return letters;
}

TEST(CommandRules, EveryNodeHasItsItems) {
    // Without and with a row that is selected.
    const std::tuple<std::string_view, std::string_view, std::string_view> cases[] = {
        {"loginaccount", "Pp", "Pp"},
        {"schedule", "As", "ADPsdp"},
        {"uucphosts", "Ah", "ADPhdp"},
        {"admin", "", "Pp"},
        {"smtpserver", "", "Pp"},
        {"smtpforward", "", "Pp"},
        {"logs", "", "PTp"},
        {"options", "", "PTp"},
        {"uucpdaemon", "", "PTp"},
        {"outbox", "R", "DRd"},
        {"uucpmonitor", "C", "C"},
        {"servername", "", ""},
        {"configuration", "", ""},
        {"system", "", ""},
        {"view", "", ""},
        {"", "", ""},
        {"Schedule", "", ""}}; // keys go by case
    for (const auto& [node, without_row, with_row] : cases) {
        EXPECT_EQ(enabled({true, node, false}), without_row) << node;
        EXPECT_EQ(enabled({true, node, true}), with_row) << node;
        EXPECT_EQ(enabled({false, node, true}), "") << node;
    }
}

TEST(CommandRules, ActivatingARowEditsItSaveForALogWhichItSwitches) {
    for (const TreeNode& each : treeNodes()) {
        const Action expected = each.key == node::Logs ? Action::ToggleLogSwitch
                                : each.key == node::LoginAccount
                                    ? Action::None
                                    : actionFor(Command::Properties, each.key);
        EXPECT_EQ(actionFor(Command::Activate, each.key), expected) << each.key;
        const Action toggle = actionFor(Command::Toggle, each.key);
        EXPECT_TRUE(toggle == Action::None || toggle == expected) << each.key;
    }
    EXPECT_EQ(actionFor(Command::Properties, node::Logs), Action::EditLogPeriod);
}

} // namespace
} // namespace tollwick
