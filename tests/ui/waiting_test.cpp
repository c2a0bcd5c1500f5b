#include "tests/ui/support/console_test.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

namespace tollwick {
namespace {

using simulator::Server;

constexpr const char* kNoOutbox =
    "Unable to retrieve outbox information from the Tollwick Service!\n"
    "The connection is terminated!";
constexpr const char* kNoAuthentication =
    "Unable to get authentication from the Tollwick Service!\nThe connection is terminated!";

class WaitingTest : public ConsoleTest {
protected:
    WaitingTest() { set(setting::ComTimeout, "1"); }

    void neverReply(ObjectClass object_class) {
        onServer([&](Server& s) {
            s.faults().only_class = object_class;
            s.faults().never_reply = true;
        });
    }
    // Ends the wait: a little more than the time-out has passed.
    void runOutOfTime() {
        clock.time.second += 1;
        clock.time.hundredths += 1;
    }
};

TEST_F(WaitingTest, NoWindowTakesInputUntilTheTimeOut) {
    logIn();
    clickNode("outbox");
    clickRow(2);
    neverReply(ObjectClass::OutboxMail);
    boxes.expectBox(QMessageBox::Critical, kNoOutbox);
    inRequest([this] { trigger("Refreshmenu"); },
              [this] {
                  EXPECT_EQ(info(), "Retrieving outbox contents...");
                  list().viewport()->repaint();
                  EXPECT_EQ(listed().size(), 13U)
                      << "the old mails stay until the new ones are there";
                  ConfigTree* tree = window().tree();
                  const QRect schedules = tree->visualItemRect(node("schedule"));
                  QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, schedules.center());
                  QTest::keyClick(tree, Qt::Key_Up);
                  QTest::keyClick(&list(), Qt::Key_Up);
                  QTest::keyClick(&list(), Qt::Key_Delete);
                  QTest::keyClick(&window(), Qt::Key_F1);
                  QTest::keyClick(&window(), Qt::Key_F, Qt::AltModifier);
                  QMenuBar* menus = window().menuBar();
                  QTest::mouseClick(menus, Qt::LeftButton, {},
                                    menus->actionGeometry(menus->actions().first()).center());
                  EXPECT_EQ(tree->selectedKey(), "outbox");
                  EXPECT_EQ(list().selectedRow(), 2);
                  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
                  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

                  int ticks = 0;
                  QTimer timer;
                  timer.callOnTimeout([&] { ++ticks; });
                  timer.start(1);
                  EXPECT_TRUE(waitUntil([&] { return ticks > 20; }));
                  clock.time.hundredths += 99;
                  EXPECT_TRUE(waitUntil([&] { return ticks > 40; }));
                  EXPECT_TRUE(context().link.isWaiting());
                  EXPECT_EQ(requestCount(ObjectClass::OutboxMail), 14) << "13 at the login";
                  runOutOfTime();
              });
    EXPECT_TRUE(isLoggedOut());
    EXPECT_TRUE(boxes.done());

    // All of it works again.
    onServer([](Server& s) { s.faults() = {}; });
    logIn();
    clickNode("schedule");
    clickRow(1);
}

TEST_F(WaitingTest, TheLoginDialogStaysUntilTheTimeOut) {
    ASSERT_TRUE(start());
    neverReply(ObjectClass::Login);
    boxes.expectBox(QMessageBox::Critical, kNoAuthentication);
    inDialog([this] { trigger("LoginMenu"); },
             [this](QDialog& login) {
                 const auto child = [&](const char* name) {
                     return login.findChild<QWidget*>(name);
                 };
                 inRequest([&] { QTest::mouseClick(child("btnOk"), Qt::LeftButton); },
                           [&] {
                               EXPECT_EQ(info(), "Connected...");
                               for (const char* name : {"btnOk", "btnCancel", "btnOptions"})
                                   EXPECT_FALSE(child(name)->isEnabled()) << name;
                               QTest::keyClick(&login, Qt::Key_Escape);
                               QTest::keyClicks(child("tbServerConnectUsername"), "x");
                               login.close();
                               EXPECT_TRUE(login.isVisible());
                               runOutOfTime();
                           });
                 EXPECT_TRUE(login.isVisible());
                 EXPECT_TRUE(child("btnOk")->isEnabled());
                 EXPECT_EQ(login.findChild<QLineEdit*>("tbServerConnectUsername")->text(), "admin");
                 QTest::mouseClick(child("btnCancel"), Qt::LeftButton);
             });
    EXPECT_FALSE(context().link.isOpen());
}

TEST_F(WaitingTest, ClosingTheWindowEndsTheProcess) {
    logIn();
    clickNode("outbox");
    neverReply(ObjectClass::OutboxMail);
    boxes.expectBox(QMessageBox::Critical, kNoOutbox); // only because the test's process goes on
    inRequest([this] { trigger("Refreshmenu"); },
              [this] {
                  window().close();
                  EXPECT_EQ(ended, 1);
                  EXPECT_EQ(stored(setting::WindowXsize), "7440");
                  runOutOfTime();
              });
    EXPECT_EQ(ended, 1);
}

TEST_F(WaitingTest, ALostConnectionEndsTheWaitAtOnce) {
    logIn();
    clickNode("outbox");
    neverReply(ObjectClass::OutboxMail);
    boxes.expectBox(QMessageBox::Critical, kNoOutbox,
                    [this](QMessageBox&) { EXPECT_TRUE(isLoggedOut()); });
    inRequest([this] { trigger("Refreshmenu"); },
              [this] { onServer([](Server& s) { s.closeConnections(); }); });
    tick();
    EXPECT_TRUE(isLoggedOut());
}

} // namespace
} // namespace tollwick
