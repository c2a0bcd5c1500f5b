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
    for (std::size_t i = 0; i < flags.size(); ++i) {
        EXPECT_TRUE(flags[i] == kOn || flags[i] == kOff);
        if (flags[i] == kOn)
            letters += "ADPTORCshdp"[i];
    }
    return letters;
}

TEST(CommandRules, EveryNodeHasItsCommandsAndItsItems) {
    using enum Action;
    const struct {
        std::string_view node;
        std::string without_row, with_row;
        Action add = None, remove = None, properties = None, toggle = None, refresh = None,
               activate = None;
    } cases[] = {
        {"servername", "", ""},
        {"configuration", "", ""},
        {"loginaccount", "Pp", "Pp", None, None, ChangeLogin},
        {"schedule", "As", "ADPsdp", AddSchedule, DeleteSchedule, EditSchedule, None, None,
         EditSchedule},
        {"system", "", ""},
        {"admin", "", "Pp", None, None, EditAdminSetting, None, None, EditAdminSetting},
        {"logs", "", "PTp", None, None, EditLogPeriod, ToggleLogSwitch, None, ToggleLogSwitch},
        {"options", "", "PTp", None, None, EditOptionSetting, EditOptionSetting, None,
         EditOptionSetting},
        {"smtpserver", "", "Pp", None, None, EditSmtpServiceSetting, None, None,
         EditSmtpServiceSetting},
        {"smtpforward", "", "Pp", None, None, EditSmtpForwardSetting, None, None,
         EditSmtpForwardSetting},
        {"uucpdaemon", "", "PTp", None, None, EditUucpDaemonSetting, EditUucpDaemonSetting, None,
         EditUucpDaemonSetting},
        {"uucphosts", "Ah", "ADPhdp", AddHost, DeleteHost, EditHost, None, None, EditHost},
        {"view", "", ""},
        {"outbox", "R", "DRd", None, DeleteMail, None, None, RefreshOutbox, None},
        {"uucpmonitor", "C", "C"},
        {"", "", ""},
        {"Schedule", "", ""}}; // keys go by case
    ASSERT_EQ(std::size(cases), treeNodes().size() + 2);
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(c.node);
        EXPECT_TRUE(i >= treeNodes().size() || treeNodes()[i].key == c.node);
        EXPECT_EQ(enabled({true, c.node, false}), c.without_row);
        EXPECT_EQ(enabled({true, c.node, true}), c.with_row);
        EXPECT_EQ(enabled({false, c.node, true}), "");
        EXPECT_EQ(actionFor(Command::Add, c.node), c.add);
        EXPECT_EQ(actionFor(Command::Delete, c.node), c.remove);
        EXPECT_EQ(actionFor(Command::Properties, c.node), c.properties);
        EXPECT_EQ(actionFor(Command::Toggle, c.node), c.toggle);
        EXPECT_EQ(actionFor(Command::Refresh, c.node), c.refresh);
        EXPECT_EQ(actionFor(Command::Activate, c.node), c.activate);
    }
}

} // namespace
} // namespace tollwick
