#include "tests/ui/support/console_test.h"
#include "ui/main/window_placement.h"

#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTreeWidgetItemIterator>

namespace tollwick {
namespace {

using simulator::Server;

constexpr const char* kRejected = "Authentication failure!\nCheck your password and try again.";
constexpr const char* kNotInitialized =
    "Unable to initialize communication link to Tollwick service!";

class LoginTest : public ConsoleTest {
protected:
    LoginTest() { EXPECT_TRUE(start()); }

    void openLogin(const std::function<void(QDialog&)>& act) {
        inDialog([this] { trigger("LoginMenu"); }, act);
    }
    static void type(QDialog& login, const char* edit, const char* text) {
        auto* field = login.findChild<QLineEdit*>(edit);
        ASSERT_TRUE(field && field->isEnabled()) << edit;
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    static void click(QDialog& login, const char* button) {
        QTest::mouseClick(login.findChild<QPushButton*>(button), Qt::LeftButton);
    }
    static std::string text(QDialog& login, const char* edit) {
        return login.findChild<QLineEdit*>(edit)->text().toStdString();
    }
    static void expectReadyForAnotherTry(QDialog& login) {
        EXPECT_TRUE(login.isVisible());
        for (const char* button : {"btnOk", "btnCancel", "btnOptions"})
            EXPECT_TRUE(login.findChild<QPushButton*>(button)->isEnabled()) << button;
    }
    void expectLoggedOut() {
        tick();
        EXPECT_FALSE(context().link.isOpen());
        EXPECT_TRUE(tree().empty());
        EXPECT_TRUE(action("LoginMenu")->isEnabled());
        EXPECT_FALSE(action("LogOffMenu")->isEnabled());
    }
};

TEST_F(LoginTest, SucceedsAsAPersonTypesIt) {
    openLogin([&](QDialog& login) {
        EXPECT_EQ(login.windowTitle(), "Login");
        ASSERT_TRUE(QTest::qWaitForWindowActive(&login));
        // The keys go where the focus is: first to the password, and Tab leads round to the name.
        const auto focused = [] { return QApplication::focusWidget(); };
        ASSERT_EQ(focused()->objectName(), "tbServerConnectPassword");
        EXPECT_EQ(qobject_cast<QLineEdit*>(focused())->echoMode(), QLineEdit::Password);
        QTest::keyClicks(focused(), " tollwick ");
        QTest::keyClick(focused(), Qt::Key_Tab, Qt::ShiftModifier);
        ASSERT_EQ(focused()->objectName(), "tbServerConnectUsername");
        EXPECT_EQ(text(login, "tbServerConnectUsername"), "admin");
        QTest::keyClick(focused(), Qt::Key_End);
        QTest::keyClicks(focused(), "x");
        QTest::keyClick(focused(), Qt::Key_Backspace);
        QTest::keyClick(focused(), Qt::Key_Return);
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
    for (QTreeWidgetItemIterator item(window().tree()); *item; ++item) {
        EXPECT_TRUE((*item)->childCount() == 0 || (*item)->isExpanded());
        EXPECT_FALSE((*item)->icon(0).isNull());
    }
    EXPECT_EQ(window().tree()->selectedKey(), "servername");
    EXPECT_EQ(context().data.settings, onServer([](Server& s) { return s.site().settings; }));
    EXPECT_EQ(context().data.settings.service_version, 4.0F);
    EXPECT_EQ(context().data.password, "tollwick");
}

TEST_F(LoginTest, AWrongLoginLeavesTheDialogForAnotherTry) {
    const std::string port = std::to_string(service.port());
    set(setting::ServerConnectPort, "1");
    ASSERT_TRUE(start());
    boxes.expectBox(QMessageBox::Critical, kRejected);
    openLogin([&](QDialog& login) {
        click(login, "btnOptions");
        type(login, "tbServerConnectIp", "localhost");
        type(login, "tbServerConnectPort", port.c_str());
        click(login, "btnOptions"); // hidden, but used
        type(login, "tbServerConnectUsername", "nobody");
        type(login, "tbServerConnectPassword", "wrong");
        click(login, "btnOk");
        expectReadyForAnotherTry(login);
        EXPECT_EQ(text(login, "tbServerConnectUsername"), "nobody");
        EXPECT_EQ(text(login, "tbServerConnectPassword"), "wrong");
        EXPECT_TRUE(tree().empty());
        type(login, "tbServerConnectUsername", simulator::kSampleUserId);
        type(login, "tbServerConnectPassword", simulator::kSamplePassword);
        click(login, "btnOk");
    });
    EXPECT_EQ(tree().at(0), "servername server [localhost]");
    // The second try came on a connection of its own.
    EXPECT_TRUE(
        waitUntil([&] { return onServer([](Server& s) { return s.connectionCount(); }) == 1; }));
    // What was typed is kept for the next start, save for the password.
    EXPECT_EQ(stored(setting::ServerConnectIp), "localhost");
    EXPECT_EQ(stored(setting::ServerConnectPort), port);
    EXPECT_EQ(stored(setting::ServerConnectUsername), "admin");
    for (const auto& [name, value] : store.values)
        EXPECT_NE(value, simulator::kSamplePassword) << name;
}

TEST_F(LoginTest, CancelLeavesTheConsoleLoggedOut) {
    openLogin([](QDialog& login) { click(login, "btnCancel"); });
    expectLoggedOut();
    EXPECT_EQ(info(), "");

    // Even when a try has opened the link.
    boxes.expectBox(QMessageBox::Critical, kRejected);
    openLogin([&](QDialog& login) {
        click(login, "btnOk");
        EXPECT_TRUE(context().link.isOpen());
        QTest::keyClick(&login, Qt::Key_Escape);
    });
    expectLoggedOut();
}

TEST_F(LoginTest, TellsThatNoServiceListens) {
    QTcpServer gone;
    ASSERT_TRUE(gone.listen(QHostAddress::LocalHost));
    const std::string port = std::to_string(gone.serverPort());
    gone.close();
    const std::string text = "Unable to connect to the Tollwick service.\nCause: (";
    boxes.expectBox(QMessageBox::Warning, text + "10061) Connection refused");
    boxes.expectBox(QMessageBox::Warning, text + "10049) Invalid port number");
    openLogin([&](QDialog& login) {
        click(login, "btnOptions");
        for (const char* wrong_port : {port.c_str(), "abc"}) {
            type(login, "tbServerConnectPort", wrong_port);
            click(login, "btnOk");
            expectReadyForAnotherTry(login);
            EXPECT_EQ(info(), "");
        }
        click(login, "btnCancel");
    });
    expectLoggedOut();
}

struct Keyless {
    const char* name;
    QByteArray first_data; // none: the connection is closed at once
};

class KeylessLoginTest : public LoginTest, public testing::WithParamInterface<Keyless> {};

TEST_P(KeylessLoginTest, GivesUpAfterThreeMoreConnections) {
    QTcpServer keyless;
    ASSERT_TRUE(keyless.listen(QHostAddress::LocalHost));
    int connections = 0;
    QObject::connect(&keyless, &QTcpServer::newConnection, [&] {
        ++connections;
        QTcpSocket* socket = keyless.nextPendingConnection();
        if (GetParam().first_data.isEmpty())
            socket->disconnectFromHost();
        else
            socket->write(GetParam().first_data);
    });
    context().main.connection.ServerConnectPort = std::to_string(keyless.serverPort());
    boxes.expectBox(QMessageBox::Warning, kNotInitialized);
    openLogin([&](QDialog& login) {
        click(login, "btnOk");
        expectReadyForAnotherTry(login);
        EXPECT_EQ(info(), "");
        click(login, "btnCancel");
    });
    EXPECT_EQ(connections, 4);
    expectLoggedOut();
}

INSTANTIATE_TEST_SUITE_P(, KeylessLoginTest,
                         testing::Values(Keyless{"FirstDataIsNoKey", "220 ready\r\n"},
                                         Keyless{"ClosedAtOnce", {}}),
                         [](const auto& test) { return test.param.name; });

TEST_F(LoginTest, AKeyOnTheSecondConnectionWillDo) {
    onServer([](Server& s) { s.faults().instead_of_key = "no key"; });
    bool was_open = false;
    QObject::connect(&context().link, &ServiceLink::stateChanged, &window(), [&] {
        if (was_open && !context().link.isOpen())
            onServer([](Server& s) { s.faults().instead_of_key.clear(); });
        was_open = context().link.isOpen();
    });
    logIn();
    EXPECT_EQ(tree().size(), 15U);
    context().link.disconnect(&window());
}

TEST_F(LoginTest, TheOptionsButtonShowsAndHidesTheLocation) {
    openLogin([](QDialog& login) {
        const auto* button = login.findChild<QPushButton*>("btnOptions");
        // A larger font stretches the dialog as a whole.
        const double stretch = login.height() / (1965 / 15.0);
        EXPECT_GE(stretch, 0.99);
        const auto expectLayout = [&](bool expanded, int height, int button_top, const char* text) {
            EXPECT_NEAR(login.height(), height / 15.0 * stretch, 1);
            for (const char* name : {"btnOk", "btnCancel", "btnOptions"})
                EXPECT_NEAR(login.findChild<QWidget*>(name)->y(), button_top / 15.0 * stretch, 1);
            EXPECT_EQ(button->text(), text);
            EXPECT_EQ(login.findChild<QGroupBox*>("frmeLocation")->isVisible(), expanded);
            for (const char* name : {"tbServerConnectIp", "tbServerConnectPort"})
                EXPECT_EQ(login.findChild<QLineEdit*>(name)->isEnabled(), expanded);
        };
        expectLayout(false, 1965, 1260, "O&ptions >>");
        click(login, "btnOptions");
        expectLayout(true, 3165, 2460, "O&ptions <<");
        type(login, "tbServerConnectIp", "kept");
        click(login, "btnOptions");
        expectLayout(false, 1965, 1260, "O&ptions >>");
        EXPECT_EQ(text(login, "tbServerConnectIp"), "kept");
        click(login, "btnCancel");
    });
}

TEST_F(LoginTest, ASecondLoginShowsAFreshTree) {
    logIn();
    clickNode("uucphosts");
    clickRow(2);
    EXPECT_EQ(listed().size(), 6U);
    trigger("toolbar_logout");
    EXPECT_TRUE(isLoggedOut());
    EXPECT_TRUE(
        waitUntil([&] { return onServer([](Server& s) { return s.connectionCount(); }) == 0; }));

    onServer([](Server& s) { s.site().hosts.pop_back(); });
    context().main.connection.ServerConnectIp = "localhost";
    logIn();
    EXPECT_EQ(tree().size(), 15U);
    EXPECT_EQ(tree().at(0), "servername server [localhost]");
    EXPECT_EQ(window().tree()->selectedKey(), "servername");
    EXPECT_EQ(listed(), Lines{""});
    clickNode("uucphosts");
    EXPECT_EQ(listed().size(), 5U);
    trigger("LogOffMenu");
    EXPECT_TRUE(isLoggedOut());
}

} // namespace
} // namespace tollwick
