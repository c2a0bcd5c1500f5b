// What goes on while a request waits for its reply.
#include "tests/ui/support/console_test.h"
#include "wire/link_receiver.h"

#include <QApplication>
#include <QMenuBar>
#include <QPushButton>
#include <QTcpSocket>
#include <QTimer>

namespace tollwick {
namespace {

using simulator::Server;

class WaitingTest : public ConsoleTest {
protected:
    // Refreshes the outbox, which fails, and acts during the wait, once it `is_due`.
    void refresh(
        const Work& act, const std::function<bool()>& is_due = [] { return true; }) {
        boxes.expectBox(kCritical, unable("retrieve outbox information from"));
        inRequest([this] { trigger("Refreshmenu"); }, act, is_due);
        EXPECT_TRUE(isLoggedOut());
        EXPECT_TRUE(boxes.done());
    }
};

TEST_F(WaitingTest, NoWindowTakesInputUntilTheTimeOut) {
    logIn();
    select("outbox", 2);
    neverReply(ObjectClass::OutboxMail);
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
        // Nor what an assistive tool reaches past the lock of the keys and the mouse.
        for (const char* name : {"DeleteMenu", "LoginMenu", "LogOffMenu"})
            action(name)->trigger();
        EXPECT_TRUE(context().link.isOpen());
        runOutOfTime();
    });
    // All of it works again.
    restore();
    logIn();
    select("schedule", 1);
}

TEST_F(WaitingTest, WhatReachesADialogNeverthelessDoesNothing) {
    logIn();
    select("schedule", 4);
    neverReply(ObjectClass::Schedule);
    boxes.expectBox(kCritical, unable("transmit data to"));
    inDialog("PropertiesMenu", [this](QDialog& form) {
        inRequest([&] { clickOn(form, "OkButton"); },
                  [&] {
                      child<QPushButton>(form, "OkButton")->click();
                      action("DeleteMenu")->trigger();
                      EXPECT_EQ(QApplication::activeModalWidget(), &form);
                      runOutOfTime();
                  });
    });
    EXPECT_EQ(saves(), 1);
}

TEST_F(WaitingTest, AnotherRowThatIsSelectedMeanwhileStays) {
    logIn();
    select("schedule", 4);
    const Lines before = listed();
    boxes.expectQuestion(Text::ConfirmDeleteSchedule, kYes);
    onServer([](Server& server) {
        server.faults().deliver = [](QTcpSocket& socket, const Comrecord& reply, auto& key) {
            const QByteArray line = QByteArray::fromStdString(encodeLine(reply, key, 1));
            QTimer::singleShot(200, &socket, [&socket, line] { socket.write(line); });
        };
    });
    inRequest([this] { trigger("DeleteMenu"); },
              [this] { list().setCurrentIndex(list().model()->index(1, 0)); });
    EXPECT_EQ(listed(), Lines(before.begin(), before.end() - 1));
}

TEST_F(WaitingTest, TheLoginDialogStaysUntilTheTimeOut) {
    ASSERT_TRUE(start());
    neverReply(ObjectClass::Login);
    boxes.expectBox(kCritical, unable("get authentication from"));
    inDialog("LoginMenu", [this](QDialog& login) {
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
    logIn();
    clickNode("outbox");
    neverReply(ObjectClass::OutboxMail);
    refresh([this] {
        window().close();
        EXPECT_EQ(ended, 1);
        EXPECT_EQ(stored(setting::WindowXsize), "7440");
        loseConnection(); // which ends the wait at once
    });
    EXPECT_EQ(ended, 1);
}

TEST_F(WaitingTest, AListThatIsFetchedIsCountedAndEscapeGivesItUp) {
    logIn();
    clickNode("outbox");
    const QWidget* count = child(window(), "WorkCount");
    EXPECT_FALSE(count->isVisible());
    // The third mail never comes.
    onServer([](Server& server) {
        server.forgetRequests();
        QObject::connect(&server, &Server::requestReceived, &server,
                         [&server] { server.faults().never_reply = server.requests().size() > 2; });
    });
    bool was_early = false;
    refresh([this] { QTest::keyClick(window().windowHandle(), Qt::Key_Escape); },
            [&] {
                if (!was_early && textOf(window(), "WorkCount") == "2") {
                    EXPECT_TRUE(child(window(), "BusyBar")->isVisible());
                    EXPECT_EQ(info(), "Retrieving outbox contents...");
                    QTest::keyClick(window().windowHandle(), Qt::Key_Escape);
                    was_early = true;
                }
                return info() == "Retrieving outbox contents... Esc to give up";
            });
    EXPECT_TRUE(was_early) << "which gives nothing up";
    EXPECT_FALSE(count->isVisible());
}

} // namespace
} // namespace tollwick
