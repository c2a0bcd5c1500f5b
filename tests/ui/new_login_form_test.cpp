#include "tests/ui/support/console_test.h"
#include "ui/main/svg_icons.h"

#include <QLineEdit>

namespace tollwick {
namespace {

constexpr const char* kFailure =
    "Unable to update authentication details in the Tollwick Service!\n"
    "The connection is terminated!";

class NewLoginFormTest : public ConsoleTest {
protected:
    void change(const Act& act) {
        clickNode("loginaccount");
        properties({act});
    }
    // "user/password" of the latest request, and as the console keeps it.
    std::string sentLogin() {
        const auto login = sent<LoginRecord>(Operation::Save, ObjectClass::Login);
        return login.user_id.text() + '/' + login.password.text();
    }
    std::string kept() { return context().data.user_id + '/' + context().data.password; }
};

TEST_F(NewLoginFormTest, ChangesThePairThatTheNextLoginNeeds) {
    logIn();
    for (const char* way : {"CancelButton", "ESC"})
        change([&](QDialog& form) {
            type("nobody\tx");
            way[0] == 'C' ? clickOn(form, way) : type("\x1b");
        });
    EXPECT_EQ(saves(), 0);
    EXPECT_EQ(kept(), "admin/tollwick");
    change([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Change login details");
        EXPECT_EQ(focused(), "tbUserId");
        EXPECT_EQ(child<QLineEdit>(form, "tbUserId")->selectedText(), "admin");
        EXPECT_EQ(child<QLabel>(form, "EditIcon")->pixmap(Qt::ReturnByValue).toImage(),
                  imageIcon("lock32").pixmap(QSize(32, 32), form.devicePixelRatioF()).toImage());
        for (const char* name : {"tbPassword", "tbPasswordAgain"})
            EXPECT_EQ(child<QLineEdit>(form, name)->echoMode(), QLineEdit::Password);
        // Passwords that differ are entered again.
        for (const char* keys : {"  åsa \tsecret\tSecret\n", "\ts\n"}) {
            boxes.expectBox(kCritical, "Passwords are not identical!\nEnter passwords again");
            type(keys);
            EXPECT_EQ(textOf(form, "tbUserId"), "  åsa ");
            EXPECT_EQ(textOf(form, "tbPassword") + textOf(form, "tbPasswordAgain"), "");
            EXPECT_EQ(focused(), "tbPassword");
        }
        EXPECT_EQ(saves(), 0);
        EXPECT_EQ(kept(), "admin/tollwick");
        type("hemlig\t hemlig  \n"); // blanks at the ends do not count
    });
    EXPECT_EQ(saves(), 1);
    EXPECT_EQ(sentLogin(), "åsa/hemlig");
    EXPECT_EQ(kept(), "åsa/hemlig");
    EXPECT_EQ(listed(), (Lines{"Login account", "setting lock åsa"}));
    for (const auto& [name, value] : store.values)
        EXPECT_NE(value, "hemlig") << name;

    // The service accepts the new pair, and no longer the old one.
    trigger("LogOffMenu");
    ASSERT_TRUE(isLoggedOut());
    boxes.expectBox(kCritical, "Authentication failure!\nCheck your password and try again.");
    inDialog([this] { trigger("LoginMenu"); },
             playing("tbServerConnectPassword=tollwick\n|tbServerConnectUsername=åsa|"
                     "tbServerConnectPassword=hemlig\n"));
    EXPECT_TRUE(context().link.isOpen());

    // An empty password is warned of and sent; blanks alone are as good, but not warned of.
    boxes.expectBox(kCritical,
                    "Warning - Password is empty!\nWe strongly recommend that you use a password!!",
                    [this](QMessageBox&) { EXPECT_EQ(kept(), "åsa/hemlig"); });
    change(typing("admin\n"));
    EXPECT_EQ(sentLogin(), "admin/");
    change(typing("admin\t  \t \n"));
    EXPECT_EQ(sentLogin(), "admin/");
    EXPECT_EQ(kept(), "admin/");
    EXPECT_EQ(saves(), 3);
}

TEST_F(NewLoginFormTest, AFailureEndsTheConnectionAndLeavesTheForm) {
    for (const Failure failure : kFailures) {
        SCOPED_TRACE(static_cast<int>(failure));
        restore();
        logIn();
        change([&](QDialog& form) {
            failing(failure, ObjectClass::Login, kFailure, [] { type("new\tpair\tpair\n"); });
            EXPECT_EQ(kept(), "new/pair") << "kept before it was sent";
            EXPECT_TRUE(isLoggedOut());
            // The buttons are back: a second try fails at once.
            boxes.expectBox(kCritical, kFailure);
            clickOn(form, "OkButton");
            EXPECT_TRUE(boxes.done());
            clickOn(form, "CancelButton");
        });
    }
}

TEST_F(NewLoginFormTest, SpeaksSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    boxes.expectBox(kCritical, "Lösenorden är inte likadana!\nAnge lösenorden igen");
    boxes.expectBox(kCritical, "Varning - lösenordet är tomt!\n"
                               "Vi rekommenderar starkt att du använder ett lösenord!");
    change([](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Ändra inloggningsuppgifter");
        EXPECT_EQ(textOf(form, "lbPasswordAgain"), "Upprepa lösenordet:");
        type("admin\tå\tä\n\n");
    });
    EXPECT_EQ(sentLogin(), "admin/");
}

} // namespace
} // namespace tollwick
