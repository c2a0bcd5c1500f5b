// The help of what is in front, with the help files that come with the program.
#include "app/files.h"
#include "tests/ui/support/console_test.h"
#include "ui/main/help_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTabWidget>
#include <QTextBrowser>

#include <filesystem>

namespace tollwick {
namespace {

class HelpDeskTest : public ConsoleTest {
protected:
    bool startWith(Integer language) {
        set(setting::CountryCode, std::to_string(language));
        const std::string suffix = language == kSwedish ? "se" : "us";
        const std::filesystem::path install = toPath(folder.text("install"));
        std::filesystem::create_directories(install);
        for (const std::string type : {".hlp", ".cnt"})
            std::filesystem::copy_file(toPath(TOLLWICK_HELP_FOLDER "/Tollw-" + suffix + type),
                                       install / ("Tollwick" + type),
                                       std::filesystem::copy_options::overwrite_existing);
        return start();
    }
    HelpWindow* help() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<HelpWindow*>(widget); found && found->isVisible())
                return found;
        return nullptr;
    }
    // The heading of the page that F1 brings up, which is then put away.
    std::string pageOnF1(QWidget& front) {
        QTest::keyClick(front.windowHandle(), Qt::Key_F1);
        return takePage();
    }
    std::string takePage() {
        if (!help())
            return "(no help)";
        EXPECT_TRUE(QTest::qWaitForWindowActive(help()));
        const QString text = help()->findChild<QTextBrowser*>("HelpPage")->toPlainText();
        QTest::keyClick(help(), Qt::Key_Escape);
        EXPECT_EQ(help(), nullptr);
        return text.section('\n', 0, 0).toStdString();
    }
};

TEST_F(HelpDeskTest, F1OpensThePageOfWhatIsInFront) {
    ASSERT_TRUE(startWith(kEnglish));
    EXPECT_EQ(pageOnF1(window()), "The administration console");
    inDialog([this] { trigger("LoginMenu"); },
             [this](QDialog& login) {
                 EXPECT_EQ(pageOnF1(login), "Logging in");
                 login.findChild<QAbstractButton*>("HelpButton")->click();
                 EXPECT_EQ(takePage(), "Logging in");
                 login.reject();
             });
    logIn();
    clickNode("smtpforward");
    EXPECT_EQ(pageOnF1(window()), "SMTP Forward");
    trigger("ContentsMenu");
    EXPECT_EQ(takePage(), "The administration console");
    clickNode("uucphosts");
    clickRow(0);
    inDialog([this] { trigger("PropertiesMenu"); },
             [this](QDialog& host) {
                 host.findChild<QTabWidget*>("SysSetupTab")->setCurrentIndex(1);
                 EXPECT_EQ(pageOnF1(host), "Host setup: Transport");
                 host.findChild<QTabWidget*>("SysSetupTab")->setCurrentIndex(4);
                 host.findChild<QAbstractButton*>("HelpButton")->click();
                 EXPECT_EQ(takePage(), "Host setup: Connection");
                 host.reject();
             });
    clickNode("outbox");
    clickRow(0);
    boxes.expectQuestion(
        "You have selected to delete a mail!\nDo you want to continue?", QMessageBox::No,
        [this](QMessageBox& box) { EXPECT_EQ(pageOnF1(box), "Messages about lists"); });
    trigger("DeleteMenu");
}

TEST_F(HelpDeskTest, EveryMessageAndWindowHasAPageInBothLanguages) {
    const Text messages[] = {Text::ConnectFailedCause,
                             Text::ConnectFailedUnknown,
                             Text::LinkNotInitialized,
                             Text::FailAuthenticate,
                             Text::AuthenticationFailure,
                             Text::ListNotSaved,
                             Text::StartupFailed,
                             Text::TimeColonMissing,
                             Text::TimeStartsWithColon,
                             Text::TimeInvalid,
                             Text::DelayExceedsInterval,
                             Text::DelayExceedsHour,
                             Text::PeriodEmpty,
                             Text::PeriodOverMidnight,
                             Text::ScheduleExists,
                             Text::ConfirmDeleteSchedule,
                             Text::ConfirmDeleteHost,
                             Text::ConfirmDeleteMail,
                             Text::IpInvalid,
                             Text::PortInvalid,
                             Text::RestartForIp,
                             Text::RestartForPort,
                             Text::IpNotAttached,
                             Text::IpNotAttachedSmtp,
                             Text::CommandInvalid,
                             Text::DebugLevelWarning,
                             Text::DischargeCrNote,
                             Text::ForceSendParamsWarning,
                             Text::FailSettings,
                             Text::FailGetSchedules,
                             Text::FailSaveSchedule,
                             Text::FailDeleteSchedule,
                             Text::FailGetHosts,
                             Text::FailDeleteHost,
                             Text::FailGetOutbox,
                             Text::FailDeleteMail,
                             Text::MailNotRemoved,
                             Text::FailGetStatus,
                             Text::FailSendCommand,
                             Text::FailDeleteHostDirectory,
                             Text::RasEntryGone,
                             Text::HostNameMissing,
                             Text::MailDomainMissing,
                             Text::RemoteHostMissing,
                             Text::HostNameTaken,
                             Text::DefaultDomainTaken,
                             Text::UucpTimeoutTooShort,
                             Text::ShareSpoolDirectory,
                             Text::ScriptNameHasPath,
                             Text::ScriptNameIllegal,
                             Text::RemoteHostChanged,
                             Text::HostLookupTooLong,
                             Text::IllegalBaudrate,
                             Text::DisplayNameMissing,
                             Text::FailTapiLocations,
                             Text::FailTapiDevices,
                             Text::FailRasEntries,
                             Text::FailGetScript,
                             Text::FailSaveScript,
                             Text::ScriptTooLarge,
                             Text::ScriptNotRead,
                             Text::PasswordsDiffer,
                             Text::PasswordEmpty,
                             Text::FailNewLogin,
                             Text::FailGetScriptFiles};
    const char* windows[] = {"start",          "main-window",   "lists",          "frmLogin",
                             "servername",     "configuration", "loginaccount",   "schedule",
                             "system",         "admin",         "logs",           "options",
                             "smtpserver",     "smtpforward",   "uucpdaemon",     "uucphosts",
                             "view",           "outbox",        "uucpmonitor",    "EditForm",
                             "ScheduleForm",   "NewLoginForm",  "ScriptFileForm", "HostSetupForm",
                             "GeneralPage",    "TransportPage", "LoginPage",      "LoginScriptPage",
                             "ConnectionPage", "ModemForm",     "AboutForm"};
    for (const auto& [language, name] : {std::pair(kEnglish, "us"), std::pair(kSwedish, "se")}) {
        const auto file = [&](const char* type) {
            return readWholeFile(toPath(std::string(TOLLWICK_HELP_FOLDER "/Tollw-") + name + type),
                                 HelpBook::kMaxFileSize)
                .value_or("");
        };
        const HelpBook book = HelpBook::parse(file(".hlp"), file(".cnt"));
        const StringTable texts(language);
        for (const Text message : messages)
            EXPECT_FALSE(book.topicOfMessage(texts(message)).empty()) << name << texts(message);
        for (const char* topic : windows)
            EXPECT_NE(book.topic(topic), nullptr) << name << topic;
    }
}

} // namespace
} // namespace tollwick
