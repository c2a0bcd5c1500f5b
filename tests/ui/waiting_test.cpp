#include "tests/ui/support/console_test.h"

#include <QApplication>
#include <QMenuBar>

namespace tollwick {
namespace {

class WaitingTest : public ConsoleTest {
protected:
    // Refreshes the outbox, which the service never answers, and acts during the wait.
    void refresh(const Work& act) {
        logIn();
        select("outbox", 2);
        neverReply(ObjectClass::OutboxMail);
        boxes.expectBox(kCritical, "Unable to retrieve outbox information from the Tollwick "
                                   "Service!\nThe connection is terminated!");
        inRequest([this] { trigger("Refreshmenu"); }, act);
        tick();
        EXPECT_TRUE(isLoggedOut());
        EXPECT_TRUE(boxes.done());
    }
};

TEST_F(WaitingTest, NoWindowTakesInputUntilTheTimeOut) {
    refresh([this] {
        EXPECT_EQ(info(), "Retrieving outbox contents...");
        list().viewport()->repaint();
        EXPECT_EQ(listed().size(), 13U) << "the old mails stay until the new ones are there";
        ConfigTree* tree = window().tree();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(node("schedule")).center());
        for (QWidget* widget : std::initializer_list<QWidget*>{tree, &list(), &window()})
            for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Delete, Qt::Key_F1})
                QTest::keyClick(widget, key);
        QTest::keyClick(&window(), Qt::Key_F, Qt::AltModifier);
        QMenuBar* menus = window().menuBar();
        QTest::mouseClick(menus, Qt::LeftButton, {},
                          menus->actionGeometry(menus->actions().first()).center());
        EXPECT_EQ(tree->selectedKey(), "outbox");
        EXPECT_EQ(list().selectedRow(), 2);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

        clock.time.hundredths += 99;
        int ticks = 0;
        QTimer timer;
        timer.callOnTimeout([&] { ++ticks; });
        timer.start(1);
        EXPECT_TRUE(waitUntil([&] { return ticks > 40; }));
        EXPECT_TRUE(context().link.isWaiting());
        EXPECT_EQ(requestCount(ObjectClass::OutboxMail), 14) << "13 at the login";
        runOutOfTime();
    });
    // All of it works again.
    restore();
    logIn();
    select("schedule", 1);
}

TEST_F(WaitingTest, TheLoginDialogStaysUntilTheTimeOut) {
    ASSERT_TRUE(start());
    neverReply(ObjectClass::Login);
    boxes.expectBox(kCritical, "Unable to get authentication from the Tollwick Service!\n"
                               "The connection is terminated!");
    inDialog([this] { trigger("LoginMenu"); },
             [this](QDialog& login) {
                 inRequest([&] { clickOn(login, "btnOk"); },
                           [&] {
                               EXPECT_EQ(info(), "Connected...");
                               for (const char* name : {"btnOk", "btnCancel", "btnOptions"})
                                   EXPECT_FALSE(child(login, name)->isEnabled()) << name;
                               QTest::keyClick(&login, Qt::Key_Escape);
                               QTest::keyClicks(child(login, "tbServerConnectUsername"), "x");
                               login.close();
                               EXPECT_TRUE(login.isVisible());
                               runOutOfTime();
                           });
                 EXPECT_EQ(textOf(login, "tbServerConnectUsername"), "admin");
                 clickOn(login, "btnCancel");
             });
    EXPECT_FALSE(context().link.isOpen());
}

TEST_F(WaitingTest, ClosingTheWindowEndsTheProcess) {
    refresh([this] {
        window().close();
        EXPECT_EQ(ended, 1);
        EXPECT_EQ(stored(setting::WindowXsize), "7440");
        loseConnection(); // which ends the wait at once
    });
    EXPECT_EQ(ended, 1);
}

} // namespace
} // namespace tollwick
