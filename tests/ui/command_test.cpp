#include "tests/ui/support/console_test.h"
#include "ui/main/command_rules.h"
#include "ui/main/node_keys.h"

#include <QAbstractButton>

namespace tollwick {
namespace {

using simulator::Server;
using simulator::Site;

constexpr const char* kDeleteSchedule =
    "You have selected to delete a schedule!\nDo you want to continue?";
constexpr const char* kDeleteHost = "You have selected to delete a host!\nDo you want to continue?";
constexpr const char* kDeleteMail = "You have selected to delete a mail!\nDo you want to continue?";
constexpr const char* kTerminated = "\nThe connection is terminated!";

struct Deletion {
    const char* node;
    const char* question;
    ObjectClass object_class;
    const char* failure;
    Lines gone; // after three times the second row
};

const Deletion kDeletions[] = {
    {"schedule",
     kDeleteSchedule,
     ObjectClass::Schedule,
     "Unable to remove schedule from the Tollwick Service!",
     {"schedule 2", "schedule 3", "schedule 5"}},
    {"uucphosts",
     kDeleteHost,
     ObjectClass::Host,
     "Unable to remove host from the Tollwick Service!",
     {"host 3", "host 4", "host 5", "directory gbglager", "directory sthlm", "directory are"}},
    {"outbox",
     kDeleteMail,
     ObjectClass::OutboxMail,
     "Unable to remove the selected mail from the Tollwick Service!",
     {"mail D.corv0A18", "mail D.corv0A19", "mail D.corv0A1A"}},
};

class CommandTest : public ConsoleTest {
protected:
    Site site() {
        return onServer([](Server& s) { return s.site(); });
    }
    // What the service holds of what can be deleted.
    Lines held() {
        const Site now = site();
        Lines names;
        for (const ScheduleRecord& schedule : now.schedules)
            names.push_back("schedule " + std::to_string(schedule.record_number));
        for (const HostRecord& host : now.hosts)
            names.push_back("host " + std::to_string(host.record_number));
        for (const VarText& directory : now.spool_directories)
            names.push_back("directory " + directory.text());
        for (const OutboxRecord& mail : now.outbox)
            names.push_back("mail " + mail.file_name.text());
        return names;
    }
    void select(const char* node, int row) {
        clickNode(node);
        clickRow(row);
    }
    std::string rowText(int row) { return listed().at(static_cast<std::size_t>(row) + 1); }
    void refuse(ObjectClass object_class) {
        onServer([&](Server& s) {
            s.faults().only_class = object_class;
            s.faults().result = result::Refused;
        });
    }
};

class DeletionTest : public CommandTest, public testing::WithParamInterface<Deletion> {
protected:
    // The ways to the command.
    void deleteBy(int way) {
        if (way == 0)
            trigger("DeleteMenu");
        else if (way == 1)
            trigger("toolbar_delete");
        else
            QTest::keyClick(&list(), Qt::Key_Delete);
    }
};

TEST_P(DeletionTest, IsAskedForAndDone) {
    logIn();
    const Lines before = held();
    for (int way = 0; way < 3; ++way) {
        select(GetParam().node, 1);
        boxes.expectQuestion(GetParam().question, QMessageBox::No);
        deleteBy(way);
    }
    EXPECT_EQ(held(), before);

    Lines rows = listed();
    for (int way = 0; way < 3; ++way) {
        select(GetParam().node, 1);
        boxes.expectQuestion(GetParam().question, QMessageBox::Yes);
        deleteBy(way);
        rows.erase(rows.begin() + 2);
        EXPECT_EQ(listed(), rows);
        EXPECT_EQ(info(), "Ready");
    }
    Lines left = before;
    for (const std::string& name : GetParam().gone)
        std::erase(left, name);
    EXPECT_EQ(held(), left);
    EXPECT_TRUE(context().link.isOpen());
}

TEST_P(DeletionTest, ThatIsRefusedEndsTheConnection) {
    logIn();
    select(GetParam().node, 1);
    const Lines before = held();
    refuse(GetParam().object_class);
    boxes.expectQuestion(GetParam().question, QMessageBox::Yes);
    boxes.expectBox(QMessageBox::Critical, std::string(GetParam().failure) + kTerminated,
                    [this](QMessageBox&) { EXPECT_EQ(tree().size(), 15U); });
    trigger("DeleteMenu");
    EXPECT_FALSE(context().link.isOpen());
    EXPECT_TRUE(isLoggedOut());
    EXPECT_EQ(held(), before);
}

TEST_P(DeletionTest, DoesNothingWhenTheConnectionIsLostBehindTheQuestion) {
    logIn();
    select(GetParam().node, 1);
    const Lines before = held();
    boxes.expectQuestion(GetParam().question, QMessageBox::Yes, [this](QMessageBox&) {
        onServer([](Server& s) { s.closeConnections(); });
        EXPECT_TRUE(isLoggedOut());
    });
    trigger("DeleteMenu");
    EXPECT_TRUE(isLoggedOut());
    EXPECT_EQ(held(), before);
}

INSTANTIATE_TEST_SUITE_P(, DeletionTest, testing::ValuesIn(kDeletions),
                         [](const auto& test) { return test.param.node; });

TEST_F(CommandTest, ASpoolDirectoryGoesWithItsLastHost) {
    onServer([](Server& s) { s.site().hosts[3].spool_directory = "gbglager"; });
    logIn();
    for (const std::size_t directories : {5U, 4U}) {
        select("uucphosts", directories == 5 ? 3 : 1);
        boxes.expectQuestion(kDeleteHost, QMessageBox::Yes);
        trigger("DeleteMenu");
        EXPECT_EQ(site().spool_directories.size(), directories);
    }
    EXPECT_EQ(requestCount(ObjectClass::HostDirectory), 1);
    EXPECT_EQ(site().hosts.size(), 3U);
}

TEST_F(CommandTest, ASpoolDirectoryThatStaysEndsTheConnection) {
    logIn();
    select("uucphosts", 0);
    refuse(ObjectClass::HostDirectory);
    boxes.expectQuestion(kDeleteHost, QMessageBox::Yes);
    boxes.expectBox(QMessageBox::Critical,
                    std::string("Unable to delete hostdirectory through the Tollwick Service!") +
                        kTerminated);
    trigger("DeleteMenu");
    EXPECT_TRUE(isLoggedOut());
    EXPECT_EQ(site().hosts.size(), 4U);
}

TEST_F(CommandTest, AMailThatCannotBeRemovedIsTold) {
    logIn();
    select("outbox", 1);
    const Lines rows = listed();
    onServer([](Server& s) { s.site().outbox.erase(s.site().outbox.begin() + 1); });
    boxes.expectQuestion(kDeleteMail, QMessageBox::Yes);
    boxes.expectBox(QMessageBox::Critical, "The selected mail could not be removed!");
    trigger("DeleteMenu");
    EXPECT_TRUE(context().link.isOpen());
    EXPECT_EQ(listed(), rows);
    EXPECT_EQ(info(), "Ready");
}

TEST_F(CommandTest, QuestionsSpeakSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    select("schedule", 0);
    boxes.expectQuestion("Du har valt att ta bort ett schema!\nVill du fortsätta?", QMessageBox::No,
                         [](QMessageBox& box) {
                             EXPECT_EQ(box.button(QMessageBox::Yes)->text(), "Ja");
                             EXPECT_EQ(box.button(QMessageBox::No)->text(), "Nej");
                         });
    trigger("DeleteMenu");
}

TEST_F(CommandTest, RefreshKeepsTheSelectedMail) {
    logIn();
    select("outbox", 4);
    const std::string selected = rowText(4);
    onServer([](Server& s) {
        s.site().outbox.erase(s.site().outbox.begin());
        s.site().outbox.push_back(s.site().outbox.front());
        s.site().outbox.back().file_name = "D.new";
    });
    trigger("Refreshmenu");
    EXPECT_EQ(listed().size(), 13U);
    EXPECT_EQ(list().selectedRow(), 3);
    EXPECT_EQ(rowText(3), selected);
    EXPECT_EQ(info(), "Ready");

    onServer([](Server& s) { s.site().outbox.erase(s.site().outbox.begin() + 3); });
    QTest::keyClick(&window(), Qt::Key_F5);
    EXPECT_EQ(listed().size(), 12U);
    EXPECT_EQ(list().selectedRow(), -1);
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
    const auto expectEnabled = [&](bool connected, const char* node_key, bool has_row) {
        tick();
        const EnableFlags flags = enableFlags({connected, node_key, has_row});
        for (std::size_t i = 0; i < flags.size(); ++i)
            EXPECT_EQ(action(kItems[i])->isEnabled(), flags[i] == kOn) << node_key << kItems[i];
        for (const char* name :
             {"LogOffMenu", "UucpTransportNowMenu", "CancelUucpTransportMenu", "toolbar_logout"})
            EXPECT_EQ(action(name)->isEnabled(), connected) << name;
        for (const char* name : {"LoginMenu", "toolbar_login"})
            EXPECT_EQ(action(name)->isEnabled(), !connected) << name;
        for (const char* name : {"TollwickServiceStart", "TollwickserviceStop"})
            EXPECT_FALSE(action(name)->isEnabled()) << name;
    };
    ASSERT_TRUE(start());
    expectEnabled(false, "", false);
    for (std::size_t i = 0; i < kMenuItems; ++i)
        EXPECT_TRUE(action(kItems[i])->isVisible()) << kItems[i];
    logIn();
    stopTimer();
    for (const TreeNode& tree_node : treeNodes()) {
        clickNode(std::string(tree_node.key));
        expectEnabled(true, tree_node.key.data(), false);
        if (list().model()->rowCount() > 0) {
            clickRow(0);
            expectEnabled(true, tree_node.key.data(), true);
        }
    }
    context().link.Close();
    expectEnabled(false, "", false);
}

} // namespace
} // namespace tollwick
