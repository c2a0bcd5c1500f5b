#include "tests/ui/support/console_test.h"

#include <QLineEdit>
#include <QTcpServer>
#include <QTcpSocket>

namespace tollwick {
namespace {

using simulator::Server;

constexpr const char* kRejected = "Authentication failure!\nCheck your password and try again.";

class LoginTest : public ConsoleTest {
protected:
    LoginTest() { EXPECT_TRUE(start()); }

    void openLogin(const Act& act) {
        inDialog([this] { trigger("LoginMenu"); }, act);
    }
    // A try that fails, and leaves the dialog ready for another.
    static void fail(QDialog& login) {
        clickOn(login, "btnOk");
        for (const char* button : {"btnOk", "btnCancel", "btnOptions"})
            EXPECT_TRUE(child(login, button)->isVisible() && child(login, button)->isEnabled());
    }
    void expectLoggedOut() {
        tick();
        EXPECT_FALSE(context().link.isOpen());
        EXPECT_TRUE(tree().empty());
        EXPECT_FALSE(action("LogOffMenu")->isEnabled());
    }
};

TEST_F(LoginTest, SucceedsAsAPersonTypesIt) {
    openLogin([&](QDialog& login) {
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
    EXPECT_EQ(context().data.password, "tollwick");

    // Another login shows a fresh tree.
    select("uucphosts", 2);
    trigger("toolbar_logout");
    EXPECT_TRUE(isLoggedOut());
    onServer([](Server& s) { s.site().hosts.pop_back(); });
    logIn();
    EXPECT_EQ(tree().size(), 15U);
    EXPECT_EQ(window().tree()->selectedKey(), "servername");
    EXPECT_EQ(listed(), Lines{""});
    clickNode("uucphosts");
    EXPECT_EQ(listed().size(), 5U);
    trigger("LogOffMenu");
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(LoginTest, AWrongLoginLeavesTheDialogForAnotherTry) {
    set(setting::ServerConnectPort, "1");
    ASSERT_TRUE(start());
    boxes.expectBox(kCritical, kRejected);
    openLogin([&](QDialog& login) {
        // A larger font stretches the dialog as a whole.
        const double unit = login.height() / 1965.0;
        const auto expectLayout = [&](bool expanded, int height, int top, const char* text) {
            EXPECT_NEAR(login.height(), height * unit, 1);
            EXPECT_NEAR(child(login, "btnOk")->y(), top * unit, 1);
            EXPECT_EQ(textOf(login, "btnOptions"), text);
            EXPECT_EQ(child(login, "frmeLocation")->isVisible(), expanded);
            EXPECT_EQ(child(login, "tbServerConnectIp")->isEnabled(), expanded);
        };
        expectLayout(false, 1965, 1260, "O&ptions >>");
        clickOn(login, "btnOptions");
        expectLayout(true, 3165, 2460, "O&ptions <<");
        play(login, "tbServerConnectIp=localhost|tbServerConnectPort=" +
                        std::to_string(service.port()) + "|btnOptions"); // hidden, but used
        expectLayout(false, 1965, 1260, "O&ptions >>");
        play(login, "tbServerConnectUsername=nobody|tbServerConnectPassword=wrong");
        fail(login);
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
    for (const auto& [name, value] : store.values)
        EXPECT_NE(value, simulator::kSamplePassword) << name;
}

TEST_F(LoginTest, CancelLeavesTheConsoleLoggedOut) {
    openLogin([](QDialog& login) { clickOn(login, "btnCancel"); });
    expectLoggedOut();
    EXPECT_EQ(info(), "");
    // Even when a try has opened the link.
    boxes.expectBox(kCritical, kRejected);
    openLogin([&](QDialog& login) {
        clickOn(login, "btnOk");
        EXPECT_TRUE(context().link.isOpen());
        type("\x1b");
    });
    expectLoggedOut();
}

TEST_F(LoginTest, TellsThatNoServiceListensOrSendsAKey) {
    // One that closes its connections or sends something else is given four.
    for (const char* first_data : {"", "220 ready\r\n"}) {
        QTcpServer keyless;
        ASSERT_TRUE(keyless.listen(QHostAddress::LocalHost));
        int connections = 0;
        QObject::connect(&keyless, &QTcpServer::newConnection, [&] {
            ++connections;
            QTcpSocket* socket = keyless.nextPendingConnection();
            *first_data ? void(socket->write(first_data)) : socket->disconnectFromHost();
        });
        openLogin([&](QDialog& login) {
            play(login, "btnOptions|tbServerConnectPort=" + std::to_string(keyless.serverPort()));
            boxes.expectBox(kExclamation,
                            "Unable to initialize communication link to Tollwick service!");
            fail(login);
            EXPECT_EQ(connections, 4);
            keyless.close();
            const std::string text = "Unable to connect to the Tollwick service.\nCause: (";
            boxes.expectBox(kExclamation, text + "10061) Connection refused");
            fail(login);
            play(login, "tbServerConnectPort=abc");
            boxes.expectBox(kExclamation, text + "10049) Invalid address or port number");
            fail(login);
            EXPECT_EQ(info(), "");
            clickOn(login, "btnCancel");
        });
        expectLoggedOut();
    }
}

TEST_F(LoginTest, AKeyOnTheSecondConnectionWillDo) {
    onServer([](Server& s) { s.faults().instead_of_key = "no key"; });
    bool was_open = false;
    QObject::connect(&context().link, &ServiceLink::stateChanged, &window(), [&] {
        if (was_open && !context().link.isOpen())
            restore();
        was_open = context().link.isOpen();
    });
    logIn();
    EXPECT_EQ(tree().size(), 15U);
    context().link.disconnect(&window());
}

} // namespace
} // namespace tollwick
