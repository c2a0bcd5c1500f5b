#include "tests/ui/support/editor_test.h"
#include "ui/main/svg_icons.h"

#include <QLineEdit>
#include <QPushButton>

namespace tollwick {
namespace {

using simulator::Server;

constexpr auto kCritical = QMessageBox::Critical;
constexpr const char* kDiffer = "Passwords are not identical!\nEnter passwords again";
constexpr const char* kEmpty =
    "Warning - Password is empty!\nWe strongly recommend that you use a password!!";
constexpr const char* kFailure =
    "Unable to update authentication details in the Tollwick Service!\n"
    "The connection is terminated!";

class NewLoginFormTest : public EditorTest {
protected:
    void change(const Act& act) {
        clickNode("loginaccount");
        inDialogs([this] { trigger("PropertiesMenu"); }, {act});
    }
    // From the user id on, which is selected; confirmed with Enter.
    static void enter(const char* user_id, const char* password, const char* again) {
        ASSERT_EQ(focused(), "tbUserId");
        type(user_id);
        press(Qt::Key_Tab);
        enterPasswords(password, again);
    }
    static void enterPasswords(const char* password, const char* again) {
        ASSERT_EQ(focused(), "tbPassword");
        type(password);
        press(Qt::Key_Tab);
        ASSERT_EQ(focused(), "tbPasswordAgain");
        type(again);
        press(Qt::Key_Return);
    }
    static std::string text(QDialog& form, const char* name) {
        return child<QLineEdit>(form, name)->text().toStdString();
    }
    // "user/password" of the latest request.
    std::string sentLogin() {
        const auto login = sent<LoginRecord>(Operation::Save, ObjectClass::Login);
        return login.user_id.text() + '/' + login.password.text();
    }
    std::string kept() { return context().data.user_id + '/' + context().data.password; }
    int requests() { return requestCount(ObjectClass::Login) - 1; } // 1 at the login
};

TEST_F(NewLoginFormTest, ChangesThePairThatTheNextLoginNeeds) {
    logIn();
    change([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Change login details");
        EXPECT_EQ(text(form, "tbUserId"), "admin");
        EXPECT_EQ(child<QLineEdit>(form, "tbUserId")->selectedText(), "admin");
        EXPECT_EQ(child<QLabel>(form, "EditIcon")->pixmap(Qt::ReturnByValue).toImage(),
                  imageIcon("lock32").pixmap(QSize(32, 32), form.devicePixelRatioF()).toImage());
        for (const char* name : {"tbPassword", "tbPasswordAgain"}) {
            EXPECT_EQ(text(form, name), "");
            EXPECT_EQ(child<QLineEdit>(form, name)->echoMode(), QLineEdit::Password);
        }
        // Blanks at the ends do not count.
        enter("  åsa ", "hemlig", " hemlig  ");
    });
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(sentLogin(), "åsa/hemlig");
    EXPECT_EQ(kept(), "åsa/hemlig");
    EXPECT_EQ(listed(), (Lines{"Login account", "setting lock åsa"}));
    EXPECT_TRUE(context().link.isOpen());
    for (const auto& [name, value] : store.values)
        EXPECT_NE(value, "hemlig") << name;

    // The service accepts the new pair, and no longer the old one.
    trigger("LogOffMenu");
    ASSERT_TRUE(isLoggedOut());
    boxes.expectBox(kCritical, "Authentication failure!\nCheck your password and try again.");
    inDialogs([this] { trigger("LoginMenu"); }, {[](QDialog& login) {
                  ASSERT_EQ(focused(), "tbServerConnectPassword");
                  type("tollwick");
                  press(Qt::Key_Return);
                  child<QLineEdit>(login, "tbServerConnectUsername")->setText("åsa");
                  child<QLineEdit>(login, "tbServerConnectPassword")->selectAll();
                  child<QLineEdit>(login, "tbServerConnectPassword")->setFocus();
                  type("hemlig");
                  press(Qt::Key_Return);
              }});
    EXPECT_TRUE(context().link.isOpen());
    clickNode("loginaccount");
    EXPECT_EQ(listed().back(), "setting lock åsa");
}

TEST_F(NewLoginFormTest, PasswordsThatDifferAreEnteredAgain) {
    logIn();
    boxes.expectBox(kCritical, kDiffer);
    boxes.expectBox(kCritical, kDiffer);
    change([&](QDialog& form) {
        enter("other", "secret", "Secret");
        for (const char* password : {"", "s"}) {
            EXPECT_TRUE(form.isVisible());
            EXPECT_EQ(text(form, "tbUserId"), "other");
            EXPECT_EQ(text(form, "tbPassword") + text(form, "tbPasswordAgain"), "");
            EXPECT_EQ(requests(), 0);
            EXPECT_EQ(kept(), "admin/tollwick");
            enterPasswords(password, "s");
        }
    });
    EXPECT_TRUE(boxes.done());
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(sentLogin(), "other/s");
}

TEST_F(NewLoginFormTest, AnEmptyPasswordIsWarnedOfAndSent) {
    logIn();
    boxes.expectBox(kCritical, kEmpty, [this](QMessageBox&) {
        EXPECT_EQ(requests(), 0);
        EXPECT_EQ(kept(), "admin/tollwick");
    });
    change([](QDialog&) { enter("admin", "", ""); });
    EXPECT_EQ(sentLogin(), "admin/");
    EXPECT_EQ(kept(), "admin/");
    // Blanks alone are as good as none, but not warned of.
    change([](QDialog&) { enter("admin", "  ", " "); });
    EXPECT_EQ(sentLogin(), "admin/");
    EXPECT_EQ(requests(), 2);
}

TEST_F(NewLoginFormTest, ACancelChangesNothing) {
    logIn();
    const std::vector<std::function<void(QDialog&)>> ways{
        [](QDialog&) { press(Qt::Key_Escape); },
        [](QDialog& form) { form.close(); },
        [](QDialog& form) {
            QTest::mouseClick(child<QPushButton>(form, "CancelButton"), Qt::LeftButton);
        },
    };
    for (const auto& way : ways) {
        clickNode("loginaccount");
        inDialogs([this] { trigger("toolbar_properties"); }, {[&](QDialog& form) {
                      type("nobody");
                      child<QLineEdit>(form, "tbPassword")->setFocus();
                      type("x");
                      way(form);
                  }});
    }
    EXPECT_EQ(requests(), 0);
    EXPECT_EQ(kept(), "admin/tollwick");
    EXPECT_EQ(listed().back(), "setting lock admin");
}

TEST_F(NewLoginFormTest, AFailureEndsTheConnectionAndLeavesTheForm) {
    for (const Failure failure : kFailures) {
        SCOPED_TRACE(static_cast<int>(failure));
        onServer([](Server& s) {
            s.faults() = {};
            s.site().login = simulator::sampleLogin();
        });
        logIn();
        change([&](QDialog& form) {
            failing(failure, ObjectClass::Login, kFailure, [&] { enter("new", "pair", "pair"); });
            EXPECT_TRUE(form.isVisible());
            EXPECT_FALSE(context().link.isOpen());
            EXPECT_EQ(kept(), "new/pair") << "kept before it was sent";
            EXPECT_TRUE(isLoggedOut());
            // The buttons are back: a second try fails at once.
            for (const char* name : {"OkButton", "CancelButton"})
                EXPECT_TRUE(child<QPushButton>(form, name)->isEnabled());
            boxes.expectBox(kCritical, kFailure);
            QTest::mouseClick(child<QPushButton>(form, "OkButton"), Qt::LeftButton);
            EXPECT_TRUE(boxes.done());
            QTest::mouseClick(child<QPushButton>(form, "CancelButton"), Qt::LeftButton);
        });
    }
}

TEST_F(NewLoginFormTest, StaysAsItIsWhileItWaits) {
    logIn();
    onServer([](Server& s) {
        s.faults().only_class = ObjectClass::Login;
        s.faults().never_reply = true;
    });
    boxes.expectBox(kCritical, kFailure);
    change([&](QDialog& form) {
        inRequest([] { enter("new", "pair", "pair"); },
                  [&] {
                      for (const char* name : {"OkButton", "CancelButton"})
                          EXPECT_FALSE(child<QPushButton>(form, name)->isEnabled()) << name;
                      QTest::keyClick(&form, Qt::Key_Escape);
                      form.reject();
                      form.accept();
                      EXPECT_TRUE(form.isVisible());
                      EXPECT_EQ(requests(), 1);
                      clock.time.second += 2;
                  });
        press(Qt::Key_Escape);
    });
}

TEST_F(NewLoginFormTest, SpeaksSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    boxes.expectBox(kCritical, "Lösenorden är inte likadana!\nAnge lösenorden igen");
    boxes.expectBox(kCritical, "Varning - lösenordet är tomt!\n"
                               "Vi rekommenderar starkt att du använder ett lösenord!");
    change([](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Ändra inloggningsuppgifter");
        EXPECT_EQ(child<QLabel>(form, "lbPasswordAgain")->text(), "Upprepa lösenordet:");
        enter("admin", "å", "ä");
        enterPasswords("", "");
    });
    EXPECT_EQ(sentLogin(), "admin/");
}

} // namespace
} // namespace tollwick
