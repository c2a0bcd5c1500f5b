#include "rules/command_rules.h"
#include "rules/node_keys.h"
#include "site/differences.h"
#include "site/site_file.h"
#include "tests/ui/support/console_test.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTcpSocket>

namespace tollwick {
namespace {

using simulator::Server;

using CommandTest = ConsoleTest;

TEST_F(CommandTest, ADeletionIsAskedForAndDone) {
    for (const auto& [node, question] : {std::pair{"schedule", Text::ConfirmDeleteSchedule},
                                         {"uucphosts", Text::ConfirmDeleteHost},
                                         {"outbox", Text::ConfirmDeleteMail}}) {
        SCOPED_TRACE(node);
        logIn();
        clickNode(node);
        Lines rows = listed();
        for (const auto answer : {kNo, kYes})
            for (const char* way : {"DeleteMenu", "toolbar_delete", "key"}) {
                clickRow(1);
                boxes.expectQuestion(question, answer);
                *way == 'k' ? QTest::keyClick(&list(), Qt::Key_Delete) : trigger(way);
                if (answer == kYes)
                    rows.erase(rows.begin() + 2);
                EXPECT_EQ(listed(), rows);
                EXPECT_EQ(info(), "Ready");
                const Site left = site();
                EXPECT_EQ(context().data.schedules, left.schedules);
                EXPECT_EQ(context().data.hosts, left.hosts);
                EXPECT_EQ(context().data.outbox, left.outbox);
            }
        // It is not done when the connection is lost behind the question.
        const int before = saves();
        clickRow(0);
        boxes.expectQuestion(question, kYes, [this](QMessageBox&) {
            loseConnection();
            EXPECT_TRUE(isLoggedOut());
        });
        trigger("DeleteMenu");
        EXPECT_EQ(saves(), before);
    }
}

TEST_F(CommandTest, ASpoolDirectoryGoesWithItsLastHost) {
    onServer([](Server& s) { s.site().hosts[3].spool_directory = " GbgLager"; });
    logIn();
    for (const auto& [row, left] : {std::pair{3, 5U}, {1, 4U}}) {
        select("uucphosts", row);
        boxes.expectQuestion(Text::ConfirmDeleteHost, kYes);
        trigger("DeleteMenu");
        EXPECT_EQ(site().spool_directories.size(), left);
    }
    // What is not done is told, and nothing is built on it.
    for (const auto& [object_class, told, rows] :
         {std::tuple{ObjectClass::Host, Text::HostNotRemoved, 3},
          {ObjectClass::HostDirectory, Text::HostDirectoryNotRemoved, 2}}) {
        onServer([&](Server& s) {
            s.forgetRequests();
            s.faults().result = 5;
            s.faults().only_class = object_class;
            s.faults().only_operation = Operation::Delete;
        });
        clickRow(0);
        boxes.expectQuestion(Text::ConfirmDeleteHost, kYes);
        boxes.expectBox(kCritical, told);
        trigger("DeleteMenu");
        EXPECT_EQ(list().model()->rowCount(), rows);
        EXPECT_EQ(requestCount(ObjectClass::HostDirectory), rows == 3 ? 0 : 1);
    }
}

class SeveralRowsTest : public ConsoleTest {
protected:
    void selectRows(const std::vector<int>& rows) {
        clickRow(rows.front());
        for (const int row : rows)
            list().selectionModel()->select(list().model()->index(row, 0),
                                            QItemSelectionModel::Select |
                                                QItemSelectionModel::Rows);
        tick();
    }
    void expectQuestion(const std::string& what) {
        boxes.expectQuestion("You have selected to delete " + what + "!\nDo you want to continue?",
                             kYes);
    }
};

TEST_F(SeveralRowsTest, AreDeletedOneByOneAfterOneQuestionAndTheNextRowIsSelected) {
    logIn();
    clickNode("outbox");
    Lines rows = listed();
    const std::string next = rows.at(6);
    // The service keeps the second of them.
    onServer([](Server& s) {
        s.faults().only_class = ObjectClass::OutboxMail;
        s.faults().only_operation = Operation::Delete;
        QObject::connect(&s, &Server::requestReceived, &s, [&s, count = 0]() mutable {
            s.faults().result = ++count == 2 ? std::optional<Integer>(77) : std::nullopt;
        });
    });
    selectRows({0, 1, 4});
    EXPECT_FALSE(action("PropertiesMenu")->isEnabled());
    EXPECT_TRUE(action("DeleteMenu")->isEnabled());
    expectQuestion("3 mails");
    boxes.expectBox(kCritical, "The service did not remove:\n" + site().outbox[1].file_name.text());
    trigger("DeleteMenu");
    for (const int gone : {5, 1})
        rows.erase(rows.begin() + gone);
    EXPECT_EQ(listed(), rows);
    EXPECT_EQ(context().data.outbox, site().outbox);
    EXPECT_EQ(rowText(list().selectedRow()), next);
    EXPECT_EQ(info(), "Ready");
    EXPECT_FALSE(child(window(), "WorkCount")->isVisible());

    // The last row leaves the one before it.
    clickNode("schedule");
    const int last = list().model()->rowCount() - 1;
    selectRows({last - 1, last});
    expectQuestion("2 schedules");
    trigger("DeleteMenu");
    EXPECT_EQ(list().selectedRow(), last - 2);
    EXPECT_EQ(context().data.schedules, site().schedules);
}

TEST_F(SeveralRowsTest, TenOfThoseThatTheServiceKeepsAreNamed) {
    logIn();
    clickNode("outbox");
    std::string told = "The service did not remove:";
    const Site kept = site();
    for (std::size_t i = 0; i < 10; ++i)
        told += '\n' + kept.outbox[i].file_name.text();
    onServer([](Server& s) {
        s.faults().only_class = ObjectClass::OutboxMail;
        s.faults().result = 77;
    });
    QTest::keySequence(&list(), QKeySequence::SelectAll);
    expectQuestion("12 mails");
    boxes.expectBox(kCritical, told + "\nand 2 more");
    trigger("DeleteMenu");
    EXPECT_EQ(list().selectedRows().size(), 12U);
}

TEST_F(SeveralRowsTest, StayWhereTheyAreBehindALostLinkOrAnEscape) {
    for (const bool is_stopped : {true, false}) {
        restore();
        logIn();
        clickNode("uucphosts");
        const std::size_t before = site().hosts.size();
        onServer([&](Server& s) {
            s.faults().only_class = ObjectClass::Host;
            QObject::connect(
                &s, &Server::requestReceived, &s, [&s, is_stopped, count = 0]() mutable {
                    if (++count == 3 && !is_stopped) // the host, its directory, the second host
                        s.faults().deliver = [](QTcpSocket& socket, const Comrecord&, auto&) {
                            socket.disconnectFromHost();
                        };
                    s.faults().never_reply = is_stopped && count == 1;
                });
        });
        selectRows({0, 1, 2});
        expectQuestion("3 hosts");
        if (!is_stopped) {
            boxes.expectBox(kCritical, unable("remove host from"));
            trigger("DeleteMenu");
            EXPECT_TRUE(isLoggedOut());
            EXPECT_EQ(context().data.hosts.size(), before - 1);
            continue;
        }
        boxes.expectBox(kCritical, unable("remove host from"));
        inRequest([this] { trigger("DeleteMenu"); },
                  [this] {
                      EXPECT_EQ(info(), "Removing host... Esc to stop");
                      QTest::keyClick(&window(), Qt::Key_Escape);
                      EXPECT_TRUE(context().link.isOpen()) << "it stops between two requests";
                      runOutOfTime();
                  });
        EXPECT_EQ(context().data.hosts.size(), before);
    }
}

TEST_F(CommandTest, AnAdditionIsSelectedAndARowOfAnOverviewLeadsToItsNode) {
    logIn();
    clickNode("schedule");
    const int count = list().model()->rowCount();
    inDialog("AddMenu", [](QDialog& form) { play(form, "TimedOption|Timed=03:03|OkButton"); });
    EXPECT_EQ(list().selectedRow(), count);
    clickNode("servername");
    EXPECT_EQ(list().selectedRow(), -1);
    clickRow(6, true);
    EXPECT_EQ(window().tree()->selectedKey(), "uucphosts");
    select("system", 1);
    trigger("toolbar_properties");
    EXPECT_EQ(window().tree()->selectedKey(), "logs");
    select("view", 1);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(window().tree()->selectedKey(), "uucpmonitor");
}

TEST_F(CommandTest, TheConfigurationIsSavedAsAFileThatOnlyItsOwnerReads) {
    logIn();
    clickNode("schedule");
    const Lines before = listed();
    const auto save = [this](const char* file) {
        inDialog("SaveConfigurationMenu", [&](QDialog& dialog) {
            EXPECT_EQ(textOf(dialog, "fileNameEdit"), "127.0.0.1.json");
            child<QLineEdit>(dialog, "fileNameEdit")
                ->setText(QString::fromStdString(folder.text(file)));
            dialog.accept();
        });
    };
    save("site"); // the suffix is added
    EXPECT_EQ(info(), "Configuration saved.");
    EXPECT_EQ(listed(), before);
    const Site saved = SiteFile(folder / "site.json", SiteFile::UnknownKeys::Refuse).load();
    EXPECT_TRUE(differencesOf(saved, site()).empty());
    EXPECT_FALSE(saved.login || !saved.outbox.empty());
#ifndef _WIN32 // there a file has the permissions of its folder
    EXPECT_EQ(std::filesystem::status(folder / "site.json").permissions() &
                  std::filesystem::perms::others_all,
              std::filesystem::perms::none);
#endif
    // A script that does not come whole is no backup.
    onServer([](Server& s) { s.site().scripts[1].text = std::string(5000, 'x'); });
    boxes.expectBox(
        kCritical,
        "A login script is longer than a message of the service and cannot be saved: fjall.scp");
    save("other.json");
    EXPECT_FALSE(std::filesystem::exists(folder / "other.json"));
    onServer([](Server& s) { s.site().scripts.clear(); });
    boxes.expectBox(kCritical, Text::ConfigurationNotSaved);
    folder.write("taken/x", "");
    save("taken/x/site.json");
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
    EXPECT_EQ(listed().size(), 11U);
    EXPECT_EQ(list().selectedRow(), -1);
}

TEST_F(CommandTest, DialogsOpenInEveryWayAndACancelSendsNothing) {
    // clang-format off
    const std::tuple<const char*, int, const char*, std::vector<std::string>> cases[] = {
        {"admin", 1, "EditForm", {"Return", "click", "PropertiesMenu", "toolbar_properties"}},
        {"smtpserver", 0, "EditForm", {"Return"}},
        {"smtpforward", 0, "EditForm", {"Return"}},
        {"options", 0, "EditForm", {"Return", "Toggmenu"}},
        {"uucpdaemon", 1, "EditForm", {"Return", "Toggmenu"}},
        {"schedule", 2, "ScheduleForm", {"Return", "AddMenu", "toolbar_addschedule"}},
        {"uucphosts", 3, "HostSetupForm", {"Return", "AddMenu", "toolbar_adduucphost"}}};
    // clang-format on
    logIn();
    for (const auto& [node, row, dialog, ways] : cases)
        for (const std::string& way : ways) {
            SCOPED_TRACE(node + way);
            select(node, row);
            inDialog(
                [&] {
                    if (way == "click")
                        clickRow(row, true);
                    else if (way == "Return")
                        QTest::keyClick(&list(), Qt::Key_Return);
                    else
                        trigger(way.c_str());
                },
                [&](QDialog& form) {
                    EXPECT_EQ(form.objectName(), dialog);
                    type("x5");
                    if (way == "click")
                        form.close();
                    else
                        way == "Return" ? clickOn(form, "CancelButton") : type("\x1b");
                });
            EXPECT_EQ(list().selectedRow(), row);
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
        for (const char* name : {"TollwickServiceStart", "TollwickserviceStop"})
            EXPECT_FALSE(action(name)->isEnabled()) << name;
        for (const char* name : {"LoginMenu", "toolbar_login"})
            EXPECT_EQ(action(name)->isEnabled(), !connected) << name;
    };
    ASSERT_TRUE(start());
    expectEnabled(false, "", false);
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

TEST_F(CommandTest, EverythingSpeaksSwedish) {
    const std::tuple<const char*, int, const char*, const char*> dialogs[] = {
        {"loginaccount", 0, "PropertiesMenu", "Ändra inloggningsuppgifter"},
        {"schedule", 0, "AddMenu", "Lägg till schema"},
        {"admin", 0, "PropertiesMenu", "Redigera IP-nummer"},
        {"uucphosts", 0, "PropertiesMenu", "Redigera värd"},
        {"uucphosts", 0, "SaveCsv", "Spara listan som..."}};
    set(setting::CountryCode, "4000");
    logIn();
    EXPECT_EQ(tree().at(14), "..uucpmonitor monitor UUCP-monitor");
    EXPECT_EQ(info(), "Klar");
    for (const auto& [node, row, command, title] : dialogs) {
        select(node, row);
        inDialog(command, [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), title);
            if (auto* look_in = dialog.findChild<QLabel*>("lookInLabel"))
                EXPECT_EQ(look_in->text(), "Leta i:") << "Qt's own words, too";
            else
                EXPECT_NE(textOf(dialog, "CancelButton").find("Avbryt"), std::string::npos);
            dialog.reject();
        });
    }
    select("schedule", 2);
    EXPECT_EQ(rowText(2), "setting schedule Vardagar|Varje: 15 min|08:00 - 17:00|5");
    std::vector<std::string> texts;
    boxes.takeAll(texts, [](QMessageBox& box) {
        EXPECT_EQ(box.button(kYes)->text(), "Ja");
        EXPECT_EQ(box.button(kNo)->text(), "Nej");
    });
    trigger("DeleteMenu");
    EXPECT_EQ(texts, Lines{"Du har valt att ta bort ett schema!\nVill du fortsätta?"});
}

} // namespace
} // namespace tollwick
