#include "tests/ui/support/console_test.h"

#include <QAbstractButton>

#include <set>

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
};

constexpr Deletion kDeletions[] = {
    {"schedule", kDeleteSchedule, ObjectClass::Schedule,
     "Unable to remove schedule from the Tollwick Service!"},
    {"uucphosts", kDeleteHost, ObjectClass::Host,
     "Unable to remove host from the Tollwick Service!"},
    {"outbox", kDeleteMail, ObjectClass::OutboxMail,
     "Unable to remove the selected mail from the Tollwick Service!"},
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
    std::string enabled() {
        std::set<std::string> names;
        for (const QAction* action : window().findChildren<QAction*>())
            if (!action->objectName().isEmpty() && action->isEnabled() && !action->menu())
                names.insert(action->objectName().toStdString());
        std::string line;
        for (const std::string& name : names)
            line += ' ' + name;
        return line;
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
    Lines left = before;
    const auto gone = [&](const char* name) { std::erase(left, name); };
    for (int way = 0; way < 3; ++way) {
        select(GetParam().node, 1);
        boxes.expectQuestion(GetParam().question, QMessageBox::Yes);
        deleteBy(way);
        rows.erase(rows.begin() + 2);
        EXPECT_EQ(listed(), rows);
        EXPECT_EQ(info(), "Ready");
    }
    switch (GetParam().object_class) {
    case ObjectClass::Schedule:
        for (const char* name : {"schedule 2", "schedule 3", "schedule 5"})
            gone(name);
        break;
    case ObjectClass::Host:
        for (const char* name : {"host 3", "host 4", "host 5", "directory gbglager",
                                 "directory sthlm", "directory are"})
            gone(name);
        break;
    default:
        for (const char* name : {"mail D.corv0A18", "mail D.corv0A19", "mail D.corv0A1A"})
            gone(name);
    }
    EXPECT_EQ(held(), left);
    EXPECT_TRUE(context().link.isOpen());
}

TEST_P(DeletionTest, ThatIsRefusedEndsTheConnection) {
    logIn();
    select(GetParam().node, 1);
    const Lines before = held();
    onServer([](Server& s) {
        s.faults().only_class = GetParam().object_class;
        s.faults().result = result::Refused;
    });
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
                         [](const auto& info) { return info.param.node; });

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
    onServer([](Server& s) {
        s.faults().only_class = ObjectClass::HostDirectory;
        s.faults().result = result::Refused;
    });
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
    boxes.expectQuestion("Du har valt att ta bort ett schema!\nVill du fortsätta?",
                         QMessageBox::No, [](QMessageBox& box) {
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

TEST_F(CommandTest, AreOfferedWhereTheNodeGivesThemAnAction) {
    const std::string always = " AboutMenu ContentsMenu CorvaleFaqMenu CorvaleWWWMenu Exitmenu";
    const std::string closed = " LoginMenu toolbar_login";
    const std::string open =
        " CancelUucpTransportMenu LogOffMenu UucpTransportNowMenu toolbar_logout";
    const std::string add_schedule = " AddMenu toolbar_addschedule";
    const std::string add_host = " AddMenu toolbar_adduucphost";
    const std::string change = " PropertiesMenu toolbar_properties";
    const std::string remove = " DeleteMenu toolbar_delete";
    const std::string toggle = " Toggmenu";
    const struct {
        const char* node;
        std::string without_row;
        std::string with_row; // in addition
    } cases[] = {
        {"servername", "", ""},
        {"configuration", "", ""},
        {"loginaccount", change, ""},
        {"schedule", add_schedule, change + remove},
        {"system", "", ""},
        {"admin", "", change},
        {"logs", "", change + toggle},
        {"options", "", change + toggle},
        {"smtpserver", "", change},
        {"smtpforward", "", change},
        {"uucpdaemon", "", change + toggle},
        {"uucphosts", add_host, change + remove},
        {"view", "", ""},
        {"outbox", " Refreshmenu", remove},
        {"uucpmonitor", " Cancelmenu", ""},
    };
    const auto sorted = [](const std::string& names) {
        std::istringstream words(names);
        const std::set<std::string> set(std::istream_iterator<std::string>(words), {});
        std::string line;
        for (const std::string& name : set)
            line += ' ' + name;
        return line;
    };

    ASSERT_TRUE(start());
    EXPECT_EQ(enabled(), sorted(always + closed));
    for (const char* name : {"AddMenu", "DeleteMenu", "PropertiesMenu", "Toggmenu", "OpenMenu",
                             "Refreshmenu", "Cancelmenu"})
        EXPECT_TRUE(action(name)->isVisible()) << name;
    logIn();
    stopTimer();
    EXPECT_EQ(std::size(cases), tree().size());
    for (const auto& c : cases) {
        SCOPED_TRACE(c.node);
        clickNode(c.node);
        tick();
        EXPECT_EQ(enabled(), sorted(always + open + c.without_row));
        if (list().model()->rowCount() > 0)
            clickRow(0);
        tick();
        EXPECT_EQ(enabled(), sorted(always + open + c.without_row + c.with_row));
    }
    context().link.Close();
    tick();
    EXPECT_EQ(enabled(), sorted(always + closed));
}

} // namespace
} // namespace tollwick
