#include "tests/ui/support/console_test.h"
#include "ui/main/command_rules.h"
#include "ui/main/node_keys.h"

#include <QAbstractButton>

namespace tollwick {
namespace {

using simulator::Server;

using CommandTest = ConsoleTest;

struct Deletion {
    const char* node;
    const char* what;
    ObjectClass object_class;
    std::string failure;

    [[nodiscard]] std::string question() const {
        return std::string("You have selected to delete a ") + what + "!\nDo you want to continue?";
    }
};

const Deletion kDeletions[] = {
    {"schedule", "schedule", ObjectClass::Schedule, "schedule"},
    {"uucphosts", "host", ObjectClass::Host, "host"},
    {"outbox", "mail", ObjectClass::OutboxMail, "the selected mail"},
};

class DeletionTest : public CommandTest, public testing::WithParamInterface<Deletion> {};

TEST_P(DeletionTest, IsAskedForAndDone) {
    const Deletion& deletion = GetParam();
    logIn();
    clickNode(deletion.node);
    Lines rows = listed();
    for (const auto answer : {kNo, kYes})
        for (const char* way : {"DeleteMenu", "toolbar_delete", "key"}) {
            clickRow(1);
            boxes.expectQuestion(deletion.question(), answer);
            *way == 'k' ? QTest::keyClick(&list(), Qt::Key_Delete) : trigger(way);
            if (answer == kYes)
                rows.erase(rows.begin() + 2);
            EXPECT_EQ(listed(), rows);
            EXPECT_EQ(info(), "Ready");
            const simulator::Site left = site();
            EXPECT_EQ(context().data.schedules, left.schedules);
            EXPECT_EQ(context().data.hosts, left.hosts);
            EXPECT_EQ(context().data.outbox, left.outbox);
            // A spool directory goes with its host.
            EXPECT_EQ(left.spool_directories.size(), left.hosts.size());
        }

    // It is not done when the connection is lost behind the question; refused, it ends that.
    for (const bool is_refused : {false, true}) {
        restore();
        if (!context().link.isOpen())
            logIn();
        select(deletion.node, 1);
        boxes.expectQuestion(deletion.question(), kYes, [&](QMessageBox&) {
            if (is_refused)
                return refuse(deletion.object_class);
            loseConnection();
            EXPECT_TRUE(isLoggedOut());
        });
        if (is_refused)
            boxes.expectBox(kCritical, "Unable to remove " + deletion.failure +
                                           " from the Tollwick Service!\n"
                                           "The connection is terminated!");
        trigger("DeleteMenu");
        EXPECT_TRUE(isLoggedOut());
        EXPECT_EQ(saves(), is_refused ? 1 : 0);
    }
}

INSTANTIATE_TEST_SUITE_P(, DeletionTest, testing::ValuesIn(kDeletions),
                         [](const auto& test) { return test.param.node; });

TEST_F(CommandTest, ASpoolDirectoryGoesWithItsLastHost) {
    onServer([](Server& s) { s.site().hosts[3].spool_directory = "gbglager"; });
    logIn();
    for (const std::size_t directories : {5U, 4U}) {
        select("uucphosts", directories == 5 ? 3 : 1);
        boxes.expectQuestion(kDeletions[1].question(), kYes);
        trigger("DeleteMenu");
        EXPECT_EQ(site().spool_directories.size(), directories);
    }
    EXPECT_EQ(requestCount(ObjectClass::HostDirectory), 1);

    select("uucphosts", 0);
    refuse(ObjectClass::HostDirectory);
    boxes.expectQuestion(kDeletions[1].question(), kYes);
    boxes.expectBox(kCritical, "Unable to delete hostdirectory through the Tollwick Service!\n"
                               "The connection is terminated!");
    trigger("DeleteMenu");
    EXPECT_TRUE(isLoggedOut());
    EXPECT_EQ(site().hosts.size(), 2U);
}

TEST_F(CommandTest, RefreshKeepsTheSelectedMail) {
    const auto eraseMail = [&](int row) {
        onServer([&](Server& s) { s.site().outbox.erase(s.site().outbox.begin() + row); });
    };
    logIn();
    select("outbox", 4);
    const std::string selected = rowText(4);
    eraseMail(0);
    trigger("Refreshmenu");
    EXPECT_EQ(listed().size(), 12U);
    EXPECT_EQ(list().selectedRow(), 3);
    EXPECT_EQ(rowText(3), selected);
    eraseMail(3);
    QTest::keyClick(&window(), Qt::Key_F5);
    const Lines rows = listed();
    EXPECT_EQ(rows.size(), 11U);
    EXPECT_EQ(list().selectedRow(), -1);

    // One that is gone cannot be deleted.
    clickRow(1);
    eraseMail(1);
    boxes.expectQuestion(kDeletions[2].question(), kYes);
    boxes.expectBox(kCritical, "The selected mail could not be removed!");
    trigger("DeleteMenu");
    EXPECT_TRUE(context().link.isOpen());
    EXPECT_EQ(listed(), rows);
    EXPECT_EQ(info(), "Ready");
}

TEST_F(CommandTest, QuestionsSpeakSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    select("schedule", 0);
    boxes.expectQuestion("Du har valt att ta bort ett schema!\nVill du fortsätta?", kNo,
                         [](QMessageBox& box) {
                             EXPECT_EQ(box.button(kYes)->text(), "Ja");
                             EXPECT_EQ(box.button(kNo)->text(), "Nej");
                         });
    trigger("DeleteMenu");
}

TEST_F(CommandTest, DialogsOpenInEveryWayAndACancelSendsNothing) {
    const struct {
        const char* node;
        int row;
        const char* dialog;
        const char* toggle = nullptr;
        const char* add = nullptr;
        const char* toolbar_add = nullptr;
    } cases[] = {{"admin", 1, "EditForm"},
                 {"smtpforward", 0, "EditForm"},
                 {"options", 0, "EditForm", "Toggmenu"},
                 {"uucpdaemon", 1, "EditForm", "Toggmenu"},
                 {"schedule", 2, "ScheduleForm", nullptr, "AddMenu", "toolbar_addschedule"},
                 {"uucphosts", 3, "HostSetupForm", nullptr, "AddMenu", "toolbar_adduucphost"}};
    logIn();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.node);
        select(c.node, c.row);
        std::vector<Work> ways{[&] { clickRow(c.row, true); },
                               [&] { QTest::keyClick(&list(), Qt::Key_Return); },
                               [&] { clickInContextMenu("PropertiesMenu"); }};
        for (const char* command :
             {"PropertiesMenu", "toolbar_properties", c.toggle, c.add, c.toolbar_add})
            if (command)
                ways.emplace_back([&, command] { trigger(command); });
        for (std::size_t i = 0; i < ways.size(); ++i)
            inDialog(ways[i], [&](QDialog& form) {
                EXPECT_EQ(form.objectName(), c.dialog);
                type("x5");
                if (i == 0)
                    form.close();
                else
                    i == 1 ? clickOn(form, "CancelButton") : type("\x1b");
            });
        EXPECT_EQ(list().selectedRow(), c.row);
    }
    EXPECT_EQ(saves(), 0);
    EXPECT_EQ(context().data.settings, site().settings);
    EXPECT_EQ(context().data.schedules, site().schedules);
    EXPECT_EQ(context().data.hosts, site().hosts);
}

TEST_F(CommandTest, FollowConnectionNodeAndRow) {
    constexpr const char* kItems[] = {"AddMenu",
                                      "DeleteMenu",
                                      "PropertiesMenu",
                                      "Toggmenu",
                                      "OpenMenu",
                                      "Refreshmenu",
                                      "Cancelmenu",
                                      "toolbar_addschedule",
                                      "toolbar_adduucphost",
                                      "toolbar_delete",
                                      "toolbar_properties"};
    const auto expectEnabled = [&](bool connected, std::string_view node_key, bool has_row) {
        tick();
        const EnableFlags flags = enableFlags({connected, node_key, has_row});
        for (std::size_t i = 0; i < flags.size(); ++i)
            EXPECT_EQ(action(kItems[i])->isEnabled(), flags[i] == kOn) << node_key << kItems[i];
        for (const char* name :
             {"LogOffMenu", "UucpTransportNowMenu", "CancelUucpTransportMenu", "toolbar_logout"})
            EXPECT_EQ(action(name)->isEnabled(), connected) << name;
        for (const char* name : {"LoginMenu", "toolbar_login"})
            EXPECT_EQ(action(name)->isEnabled(), !connected) << name;
    };
    ASSERT_TRUE(start());
    expectEnabled(false, "", false);
    for (std::size_t i = 0; i < kMenuItems; ++i)
        EXPECT_TRUE(action(kItems[i])->isVisible()) << kItems[i];
    logIn();
    stopTimer();
    for (const TreeNode& tree_node : treeNodes()) {
        clickNode(std::string(tree_node.key));
        expectEnabled(true, tree_node.key, false);
        if (list().model()->rowCount() > 0) {
            clickRow(0);
            expectEnabled(true, tree_node.key, true);
        }
    }
    context().link.Close();
    expectEnabled(false, "", false);
}

constexpr const char* kSettings =
    "Unable to transfer new settings to the Tollwick Service!\nThe connection is terminated!";
constexpr const char* kSchedule =
    "Unable to transmit data to the Tollwick Service!\nThe connection is terminated!";

// Something to save, and what the list shows of it until the next tick when that failed.
struct Attempt {
    const char* name;
    const char* node;
    int row;
    const char* command;
    const char* keys; // nullptr: there is no dialog
    ObjectClass object_class;
    const char* message;
    const char* left;
};

// clang-format off
const Attempt kAttempts[] = {
    {"IpNumber", "smtpserver", 0, "PropertiesMenu", " 127.0.0.1\n", ObjectClass::Settings,
     kSettings,
     "SmtpServiceIp netadress SMTP service address:|127.0.0.1"},
    {"Port", "smtpforward", 1, "PropertiesMenu", "80\n", ObjectClass::Settings, kSettings,
     "smtpforwardport portin SMTP forward to port:|80"},
    {"Switch", "logs", 3, "Toggmenu", nullptr, ObjectClass::Settings, kSettings,
     "scriptlogging squareselected Script logging|7"},
    {"LogPeriod", "logs", 3, "PropertiesMenu", "8\n", ObjectClass::Settings, kSettings,
     "scriptlogging square Script logging|8"},
    {"NewSchedule", "schedule", 2, "AddMenu", "\t\t\t8:8\t9:9\n", ObjectClass::Schedule, kSchedule,
     "setting schedule Weekdays|Every: 15 min|08:00 - 17:00|5"},
    {"Schedule", "schedule", 2, "PropertiesMenu", "s\n", ObjectClass::Schedule, kSchedule,
     "setting schedule Weekdays|Every: 15 min|08:00 - 17:00|5"},
};
// clang-format on

class FailureTest : public ConsoleTest, public testing::WithParamInterface<Attempt> {};

TEST_P(FailureTest, EndsTheConnection) {
    const Attempt& attempt = GetParam();
    for (const Failure failure : kFailures) {
        if (!attempt.keys && failure == Failure::ConnectionLostBefore)
            continue;
        SCOPED_TRACE(static_cast<int>(failure));
        restore();
        logIn();
        select(attempt.node, attempt.row);
        stopTimer();
        const Lines rows = listed();
        const std::vector<ScheduleRecord> schedules = context().data.schedules;
        if (attempt.name == std::string("IpNumber"))
            boxes.expectBox(kExclamation,
                            "The Tollwick service need to restarted for the IP-number "
                            "change to take effect!");
        const auto fail = [&](const Work& save) {
            failing(failure, attempt.object_class, attempt.message, save);
        };
        const bool is_lost_before = failure == Failure::ConnectionLostBefore;
        const Act enter = [&](QDialog&) {
            is_lost_before ? fail([&] { type(attempt.keys); }) : type(attempt.keys);
        };
        const Work save = [&] {
            attempt.keys ? inDialog([&] { trigger(attempt.command); }, enter)
                         : trigger(attempt.command);
        };
        is_lost_before ? save() : fail(save);
        EXPECT_FALSE(context().link.isOpen());
        EXPECT_EQ(listed().size(), rows.size());
        EXPECT_EQ(rowText(attempt.row), attempt.left);
        EXPECT_EQ(context().data.schedules, schedules);
        EXPECT_EQ(saves(), failure == Failure::ConnectionLostBefore ? 0 : 1);
        EXPECT_TRUE(boxes.done());
        tick();
        EXPECT_TRUE(isLoggedOut());
        window().menuTimer()->start();
    }
    restore();
    logIn();
    EXPECT_EQ(context().data.settings, site().settings) << "as if nothing had been entered";
}

INSTANTIATE_TEST_SUITE_P(, FailureTest, testing::ValuesIn(kAttempts),
                         [](const auto& test) { return test.param.name; });

} // namespace
} // namespace tollwick
