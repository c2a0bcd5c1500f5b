// What takes its time: the count of what has come, giving up, and the servers that are remembered.
#include "app/files.h"
#include "tests/ui/support/console_test.h"
#include "ui/main/monitor_panel.h"
#include "ui/main/speed_graph.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QCompleter>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

namespace tollwick {
namespace {

class LongWorkTest : public ConsoleTest {
protected:
    std::string textLog() {
        return readWholeFile(toPath(folder.text("install/Logs/Tollwick.log")), 100'000)
            .value_or("");
    }
};

TEST_F(LongWorkTest, AListThatIsFetchedIsCountedAndEscapeGivesItUp) {
    logIn();
    clickNode("outbox");
    const auto count = [this] { return window().findChild<QLabel*>("FetchedEntries"); };
    EXPECT_FALSE(count()->isVisible());
    // The third mail never comes.
    onServer([](simulator::Server& server) {
        server.forgetRequests();
        QObject::connect(&server, &simulator::Server::requestReceived, &server, [&server] {
            const auto& requests = server.requests();
            server.faults().never_reply =
                requests.size() > 2 &&
                requests[requests.size() - 2].operation == static_cast<Integer>(Operation::GetNext);
        });
    });
    boxes.expectBox(QMessageBox::Critical,
                    "Unable to retrieve outbox information from the Tollwick Service!\n"
                    "The connection is terminated!");
    const auto* busy = window().findChild<QProgressBar*>("BusyBar");
    inRequest([this] { trigger("Refreshmenu"); },
              [&] {
                  EXPECT_EQ(info(), "Retrieving outbox contents...");
                  QTest::keyClick(window().windowHandle(), Qt::Key_Escape);
              },
              [&] { return busy->isVisible() && count()->text() == "2"; });
    EXPECT_FALSE(count()->isVisible());
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(LongWorkTest, ALoginWithoutAKeyIsGivenUpAndLogged) {
    onServer([](simulator::Server& server) { server.faults().send_no_key = true; });
    ASSERT_TRUE(start());
    boxes.expectBox(QMessageBox::Warning,
                    "Unable to initialize communication link to Tollwick service!");
    inDialog([this] { trigger("LoginMenu"); },
             [this](QDialog& login) {
                 QTimer later;
                 later.callOnTimeout([&] {
                     if (!context().link.isOpen())
                         return;
                     later.stop();
                     QTest::keyClick(&login, Qt::Key_Escape);
                 });
                 later.start(10);
                 login.findChild<QPushButton*>("btnOk")->click();
                 EXPECT_TRUE(boxes.done());
                 EXPECT_TRUE(login.isVisible());
                 EXPECT_TRUE(login.findChild<QPushButton*>("btnOk")->isEnabled());
                 login.reject();
             });
    EXPECT_NE(textLog().find("Unable to initialize communication link to Tollwick service! ; "
                             "(0/71:5)"),
              std::string::npos)
        << textLog();
}

TEST_F(LongWorkTest, TheServersOfLateCompleteTheAddress) {
    logIn();
    trigger("LogOffMenu");
    ASSERT_TRUE(isLoggedOut());
    set(setting::ServerConnectIp, "elsewhere.example");
    const std::string port = std::to_string(service.port());
    EXPECT_EQ(stored({"Servers", "Server1", ""}), "127.0.0.1|" + port + "|admin");
    for (const auto& [key, value] : store.values)
        EXPECT_EQ(value.find(simulator::kSamplePassword), std::string::npos) << key;
    inDialog([this] { trigger("LoginMenu"); },
             [&](QDialog& login) {
                 login.findChild<QPushButton*>("btnOptions")->click();
                 const auto field = [&](const char* name) {
                     return login.findChild<QLineEdit*>(name);
                 };
                 for (const char* name :
                      {"tbServerConnectIp", "tbServerConnectPort", "tbServerConnectUsername"})
                     field(name)->clear();
                 QLineEdit* address = field("tbServerConnectIp");
                 address->setFocus();
                 QTest::keyClicks(address, "127");
                 QAbstractItemView* popup = address->completer()->popup();
                 ASSERT_TRUE(waitUntil([&] { return popup->isVisible(); }));
                 QTest::keyClick(popup, Qt::Key_Down);
                 QTest::keyClick(popup, Qt::Key_Return);
                 EXPECT_EQ(address->text(), "127.0.0.1");
                 EXPECT_EQ(field("tbServerConnectPort")->text().toStdString(), port);
                 EXPECT_EQ(field("tbServerConnectUsername")->text(), "admin");
                 login.reject();
             });
}

TEST_F(LongWorkTest, TheMonitorDrawsATransportAndTellsItsEnd) {
    logIn();
    std::string told;
    window().notify = [&](const QString& text) { told += text.toStdString(); };
    stopTimer();
    clickNode("uucpmonitor");
    auto* bar = window().findChild<QProgressBar*>("MonitorProgress");
    const auto poll = [&] {
        const auto samples = [this] {
            return window().findChild<SpeedGraph*>()->history().samples().size();
        };
        const auto before = samples();
        EXPECT_TRUE(waitUntil([&] {
            tick();
            return samples() > before;
        }));
    };
    EXPECT_TRUE(bar->isVisible());
    poll();
    trigger("UucpTransportNowMenu");
    for (int polls = 0; bar->value() == 0 && polls < 200; ++polls) {
        letTransportRun(500);
        poll();
    }
    EXPECT_GT(bar->value(), 0);
    EXPECT_GT(window().findChild<SpeedGraph*>()->history().highest(), 0);
    EXPECT_EQ(told, "");
    const auto end = [&] {
        trigger("CancelUucpTransportMenu");
        letTransportRun(60'000);
        for (int polls = 0; polls <= TransportWatch::kQuietStatuses + 1; ++polls)
            poll();
    };
    end();
    EXPECT_EQ(told, "The UUCP transport has ended.");
    // It can be switched off, for good.
    window().findChild<QCheckBox*>("NotifyOption")->click();
    EXPECT_EQ(stored({"General", "TransportNotification", "1"}), "0");
    trigger("UucpTransportNowMenu");
    for (int polls = 0; bar->value() == 0 && polls < 200; ++polls) {
        letTransportRun(500);
        poll();
    }
    end();
    EXPECT_EQ(told, "The UUCP transport has ended.");
    clickNode("outbox");
    EXPECT_FALSE(bar->isVisible());
}

} // namespace
} // namespace tollwick
