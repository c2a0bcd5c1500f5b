#include "tests/ui/support/console_test.h"

#include <QLineEdit>

namespace tollwick {
namespace {

class NewLoginFormTest : public ConsoleTest {
protected:
    void change(const Act& act) {
        clickNode("loginaccount");
        inDialog("PropertiesMenu", act);
    }
    // The pair as the console keeps it, "user/password".
    std::string kept() { return context().data.user_id + '/' + context().data.password; }
};

TEST_F(NewLoginFormTest, ChangesThePairThatTheNextLoginNeeds) {
    logIn();
    change(typing("nobody\tx\x1b"));
    EXPECT_EQ(saves(), 0);
    EXPECT_EQ(kept(), "admin/tollwick");
    change([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Change login details");
        EXPECT_FALSE(child<QLabel>(form, "EditIcon")->pixmap().isNull());
        EXPECT_EQ(child<QLineEdit>(form, "tbUserId")->selectedText(), "admin");
        for (const char* name : {"tbPassword", "tbPasswordAgain"})
            EXPECT_EQ(child<QLineEdit>(form, name)->echoMode(), QLineEdit::Password);
        // Passwords that differ are entered again.
        for (const char* keys : {"  åsa \tsecret\tSecret\n", "\ts\n"}) {
            boxes.expectBox(kCritical, Text::PasswordsDiffer);
            type(keys);
            play(form, "tbUserId?  åsa |tbPassword?|tbPasswordAgain?|?tbPassword");
        }
        EXPECT_EQ(kept(), "admin/tollwick");
        type("hemlig\t hemlig  \n"); // blanks at the ends do not count
    });
    EXPECT_EQ(saves(), 1);
    EXPECT_EQ(kept(), "åsa/hemlig");
    EXPECT_EQ(listed(), (Lines{"Login account", "setting lock åsa"}));

    // The service accepts the new pair, and no longer the old one.
    trigger("LogOffMenu");
    ASSERT_TRUE(isLoggedOut());
    boxes.expectBox(kCritical, Text::AuthenticationFailure);
    inDialog("LoginMenu", [](QDialog& login) {
        play(login, "tbServerConnectPassword=tollwick\n|tbServerConnectUsername=åsa|"
                    "tbServerConnectPassword=hemlig\n");
    });
    EXPECT_TRUE(context().link.isOpen());
    for (const auto& [name, value] : store.values)
        EXPECT_EQ(value.find("hemlig"), std::string::npos) << name;

    // An empty password is warned of and sent; blanks alone are as good, but not warned of.
    boxes.expectBox(kCritical, Text::PasswordEmpty,
                    [this](QMessageBox&) { EXPECT_EQ(kept(), "åsa/hemlig"); });
    change(typing("admin\n"));
    EXPECT_EQ(kept(), "admin/");
    change(typing("admin\t  \t \n"));
    EXPECT_EQ(saves(), 3);
}

TEST_F(NewLoginFormTest, AFailureEndsTheConnectionAndLeavesTheForm) {
    const char* what = "update authentication details in";
    logIn();
    change([&](QDialog& form) {
        refused(ObjectClass::Login, what, [] { type("new\tpair\tpair\n"); });
        EXPECT_TRUE(isLoggedOut());
        // The buttons are back: a second try fails at once.
        boxes.expectBox(kCritical, unable(what));
        clickOn(form, "OkButton");
        clickOn(form, "CancelButton");
    });
}

} // namespace
} // namespace tollwick
