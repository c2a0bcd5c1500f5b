#include "ui/main/command_rules.h"
#include "ui/main/node_keys.h"

#include <gtest/gtest.h>

#include <string>

namespace tollwick {
namespace {

struct NodeCommands {
    std::string_view node;
    Action add, remove, properties, toggle, refresh, activate;
};

constexpr auto None = Action::None;
constexpr NodeCommands kCommands[] = {
    {"servername", None, None, None, None, None, None},
    {"configuration", None, None, None, None, None, None},
    {"loginaccount", None, None, Action::ChangeLogin, None, None, None},
    {"schedule", Action::AddSchedule, Action::DeleteSchedule, Action::EditSchedule, None, None,
     Action::EditSchedule},
    {"system", None, None, None, None, None, None},
    {"admin", None, None, Action::EditAdminSetting, None, None, Action::EditAdminSetting},
    {"logs", None, None, Action::EditLogPeriod, Action::ToggleLogSwitch, None,
     Action::ToggleLogSwitch},
    {"options", None, None, Action::EditOptionSetting, Action::EditOptionSetting, None,
     Action::EditOptionSetting},
    {"smtpserver", None, None, Action::EditSmtpServiceSetting, None, None,
     Action::EditSmtpServiceSetting},
    {"smtpforward", None, None, Action::EditSmtpForwardSetting, None, None,
     Action::EditSmtpForwardSetting},
    {"uucpdaemon", None, None, Action::EditUucpDaemonSetting, Action::EditUucpDaemonSetting, None,
     Action::EditUucpDaemonSetting},
    {"uucphosts", Action::AddHost, Action::DeleteHost, Action::EditHost, None, None,
     Action::EditHost},
    {"view", None, None, None, None, None, None},
    {"outbox", None, Action::DeleteMail, None, None, Action::RefreshOutbox, None},
    {"uucpmonitor", None, None, None, None, None, None},
    {"", None, None, None, None, None, None},
    {"Schedule", None, None, None, None, None, None}, // keys go by case
};

TEST(CommandRules, EveryNodeHasItsCommands) {
    ASSERT_EQ(std::size(kCommands), treeNodes().size() + 2);
    for (std::size_t i = 0; i < treeNodes().size(); ++i)
        EXPECT_EQ(treeNodes()[i].key, kCommands[i].node);
    for (const NodeCommands& c : kCommands) {
        SCOPED_TRACE(c.node);
        EXPECT_EQ(actionFor(Command::Add, c.node), c.add);
        EXPECT_EQ(actionFor(Command::Delete, c.node), c.remove);
        EXPECT_EQ(actionFor(Command::Properties, c.node), c.properties);
        EXPECT_EQ(actionFor(Command::Toggle, c.node), c.toggle);
        EXPECT_EQ(actionFor(Command::Refresh, c.node), c.refresh);
        EXPECT_EQ(actionFor(Command::Activate, c.node), c.activate);
    }
}

// One letter per item that is enabled: the Tools menu's Add, Delete, Properties, Toggle, Open,
// Refresh and Cancel; then, in small letters, the toolbar's add schedule, add host, delete and
// properties.
std::string enabled(const Selection& selection) {
    constexpr std::string_view kLetters = "ADPTORCshdp";
    std::string letters;
    const EnableFlags flags = enableFlags(selection);
    for (std::size_t i = 0; i < flags.size(); ++i) {
        EXPECT_TRUE(flags[i] == kOn || flags[i] == kOff);
        if (flags[i] == kOn)
            letters += kLetters[i];
    }
    return letters;
}

TEST(CommandRules, ItemsAreEnabledByConnectionNodeAndRow) {
    const struct {
        std::string_view node;
        std::string without_row;
        std::string with_row;
    } cases[] = {
        {"servername", "", ""},
        {"configuration", "", ""},
        {"loginaccount", "Pp", "Pp"},
        {"schedule", "As", "ADPsdp"},
        {"system", "", ""},
        {"admin", "", "Pp"},
        {"logs", "", "PTp"},
        {"options", "", "PTp"},
        {"smtpserver", "", "Pp"},
        {"smtpforward", "", "Pp"},
        {"uucpdaemon", "", "PTp"},
        {"uucphosts", "Ah", "ADPhdp"},
        {"view", "", ""},
        {"outbox", "R", "DRd"},
        {"uucpmonitor", "C", "C"},
        {"", "", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.node);
        EXPECT_EQ(enabled({true, c.node, false}), c.without_row);
        EXPECT_EQ(enabled({true, c.node, true}), c.with_row);
        EXPECT_EQ(enabled({false, c.node, true}), "");
    }
}

} // namespace
} // namespace tollwick
