#include "tests/ui/support/console_test.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>

namespace tollwick {
namespace {

using simulator::Server;

class LoginTest : public ConsoleTest {
protected:
    LoginTest() { EXPECT_TRUE(start()); }

    // A try that fails, and leaves the dialog ready for another.
    void fail(QDialog& login, QMessageBox::Icon icon, Text message) {
        boxes.expectBox(icon, message);
        clickOn(login, "btnOk");
        EXPECT_TRUE(boxes.done());
        for (const char* button : {"btnOk", "btnCancel", "btnOptions"})
            EXPECT_TRUE(child(login, button)->isVisible() && child(login, button)->isEnabled());
    }
};

TEST_F(LoginTest, SucceedsAsAPersonTypesIt) {
    inDialog("LoginMenu", [&](QDialog& login) {
        EXPECT_EQ(login.windowTitle(), "Login");
        // The keys go where the focus is: first to the password, and Tab leads round to the name.
        EXPECT_EQ(focused(), "tbServerConnectPassword");
        EXPECT_EQ(child<QLineEdit>(login, "tbServerConnectPassword")->echoMode(),
                  QLineEdit::Password);
        type(" tollwick ");
        press(Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_EQ(focused(), "tbServerConnectUsername");
        type("admin\n");
    });
    EXPECT_EQ(info(), "Ready");
    EXPECT_EQ(tree(),
              (Lines{"servername server [127.0.0.1]", ".configuration config2 Configuration",
                     "..loginaccount lock Login account", "..schedule schedule Schedules",
                     "..system system System", "...admin admin Admin", "...logs log Logs",
                     "...options options Options", "...smtpserver mailin SMTP Server",
                     "...smtpforward mailout SMTP Forward", "...uucpdaemon modem UUCP Daemon",
                     "..uucphosts transport UUCP hosts", ".view view View",
                     "..outbox mailbox Outbox", "..uucpmonitor monitor UUCP monitor"}));
    for (const char* key : {"configuration", "system", "view"})
        EXPECT_TRUE(node(key)->isExpanded() && !node(key)->icon(0).isNull());
    EXPECT_EQ(window().tree()->selectedKey(), "servername");
    EXPECT_EQ(context().data.settings, site().settings);

    // Another login shows a fresh tree.
    select("uucphosts", 2);
    trigger("toolbar_logout");
    EXPECT_TRUE(isLoggedOut());
    onServer([](Server& s) { s.site().hosts.pop_back(); });
    logIn();
    EXPECT_EQ(tree().size(), 15U);
    EXPECT_EQ(window().tree()->selectedKey(), "servername");
    EXPECT_EQ(list().nodeKey(), "servername");
    clickNode("uucphosts");
    EXPECT_EQ(listed().size(), 5U);
    trigger("LogOffMenu");
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(LoginTest, AWrongLoginLeavesTheDialogForAnotherTry) {
    set(setting::ServerConnectPort, "1");
    ASSERT_TRUE(start());
    inDialog("LoginMenu", [&](QDialog& login) {
        for (const auto& [caption, is_expanded] :
             {std::pair{"O&ptions >>", false}, {"O&ptions <<", true}}) {
            EXPECT_EQ(textOf(login, "btnOptions"), caption);
            EXPECT_EQ(child(login, "frmeLocation")->isVisible(), is_expanded);
            EXPECT_EQ(child(login, "tbServerConnectIp")->isEnabled(), is_expanded);
            if (!is_expanded)
                clickOn(login, "btnOptions");
        }
        play(login, "tbServerConnectIp=localhost|tbServerConnectPort=" +
                        std::to_string(service.port()) + "|btnOptions"); // hidden, but used
        play(login, "tbServerConnectUsername=nobody|tbServerConnectPassword=wrong");
        fail(login, kCritical, Text::AuthenticationFailure);
        EXPECT_EQ(focused(), "tbServerConnectPassword");
        EXPECT_TRUE(tree().empty());
        play(login, "tbServerConnectUsername?nobody|tbServerConnectPassword?wrong|"
                    "tbServerConnectUsername=admin|tbServerConnectPassword=tollwick|btnOk");
    });
    EXPECT_EQ(tree().at(0), "servername server [localhost]");
    // The second try came on a connection of its own.
    EXPECT_TRUE(
        waitUntil([&] { return onServer([](Server& s) { return s.connectionCount(); }) == 1; }));
    // What was typed is kept for the next start, save for the password.
    EXPECT_EQ(stored(setting::ServerConnectIp), "localhost");
    EXPECT_EQ(stored(setting::ServerConnectPort), std::to_string(service.port()));
    EXPECT_EQ(stored(setting::ServerConnectUsername), "admin");
}

TEST_F(LoginTest, CancelAfterAWrongLoginClosesTheConnection) {
    inDialog("LoginMenu", [&](QDialog& login) {
        fail(login, kCritical, Text::AuthenticationFailure);
        EXPECT_TRUE(context().link.isOpen());
        clickOn(login, "btnCancel");
    });
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(LoginTest, ThatIsGivenUpWhileItConnectsSaysNothing) {
    onServer([](Server& s) { s.faults().send_no_key = true; });
    inDialog("LoginMenu", [this](QDialog& login) {
        bool was_early = false;
        QTimer later;
        later.callOnTimeout([&] {
            if (!context().link.isOpen())
                return;
            const bool is_offered = info() == "Connecting... Esc to give up";
            if (was_early == is_offered) { // at first it is not offered yet and does nothing
                was_early = true;
                QTest::keyClick(&login, Qt::Key_Escape);
            }
        });
        later.start(10);
        clickOn(login, "btnOk");
        EXPECT_TRUE(was_early);
        EXPECT_EQ(info(), "");
        EXPECT_TRUE(login.isVisible());
        login.reject();
    });
    EXPECT_EQ(logged().size(), 2U) << "of the folders that were made";
}

TEST_F(LoginTest, TheServersOfLateCompleteTheAddress) {
    logIn();
    trigger("LogOffMenu");
    ASSERT_TRUE(isLoggedOut());
    const std::string port = std::to_string(service.port());
    EXPECT_EQ(stored({"Servers", "Server1", ""}), "127.0.0.1|" + port + "|admin");
    inDialog("LoginMenu", [&](QDialog& login) {
        play(login, "btnOptions|tbServerConnectPort=|tbServerConnectUsername=|"
                    "tbServerConnectIp=0.0.1");
        QAbstractItemView* popup =
            child<QLineEdit>(login, "tbServerConnectIp")->completer()->popup();
        ASSERT_TRUE(waitUntil([&] { return popup->isVisible(); }));
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        play(login, "tbServerConnectIp?127.0.0.1|tbServerConnectPort?" + port +
                        "|tbServerConnectUsername?admin|tbServerConnectIp=elsewhere");
        press(Qt::Key_Down); // shows all of them
        EXPECT_TRUE(popup->isVisible());
        popup->hide();
        login.reject();
    });
}

} // namespace
} // namespace tollwick
