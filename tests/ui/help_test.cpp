// The help of what is in front, and the window that shows it.
#include "base/files.h"
#include "tests/ui/support/console_test.h"
#include "ui/help/help_window.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>

#include <filesystem>

namespace tollwick {
namespace {

class HelpDeskTest : public ConsoleTest {
protected:
    // The heading of the page that F1 brings up, which is then put away.
    std::string pageOnF1(QWidget& front) {
        QTest::keyClick(front.windowHandle(), Qt::Key_F1);
        return takePage();
    }
    std::string takePage() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* help = qobject_cast<HelpWindow*>(widget); help && help->isVisible()) {
                EXPECT_TRUE(QTest::qWaitForWindowActive(help));
                QTest::keyClick(help, Qt::Key_Escape);
                EXPECT_FALSE(help->isVisible());
                const std::string page = textOf(*help, "HelpPage");
                return page.substr(0, page.find('\n'));
            }
        return "(no help)";
    }
};

TEST_F(HelpDeskTest, F1OpensThePageOfWhatIsInFront) {
    const std::filesystem::path install = toPath(folder.text("install"));
    std::filesystem::create_directories(install);
    for (const std::string type : {".hlp", ".cnt"})
        std::filesystem::copy_file(toPath(TOLLWICK_HELP_FOLDER "/Tollw-us" + type),
                                   install / ("Tollwick" + type));
    ASSERT_TRUE(start());
    EXPECT_EQ(pageOnF1(window()), "The administration console");
    inDialog("LoginMenu", [this](QDialog& login) {
        EXPECT_EQ(pageOnF1(login), "Logging in");
        clickOn(login, "HelpButton");
        EXPECT_EQ(takePage(), "Logging in");
        login.reject();
    });
    logIn();
    clickNode("smtpforward");
    EXPECT_EQ(pageOnF1(window()), "SMTP Forward");
    trigger("ContentsMenu");
    EXPECT_EQ(takePage(), "The administration console");
    select("uucphosts", 0);
    inDialog("PropertiesMenu", [this](QDialog& host) {
        auto* tabs = child<QTabWidget>(host, "SysSetupTab");
        tabs->setCurrentIndex(1);
        EXPECT_EQ(pageOnF1(host), "Host setup: Transport");
        tabs->setCurrentIndex(4);
        clickOn(host, "HelpButton");
        EXPECT_EQ(takePage(), "Host setup: Connection");
        host.reject();
    });
    select("outbox", 0);
    boxes.expectQuestion(Text::ConfirmDeleteMail, QMessageBox::No, [this](QMessageBox& box) {
        EXPECT_EQ(pageOnF1(box), "Messages about lists");
    });
    trigger("DeleteMenu");
}

TEST_F(HelpDeskTest, EveryMessageAndWindowHasAPageInBothLanguages) {
    using enum Text;
    // clang-format off
    const Text messages[] = {
        ConnectFailedCause, ConnectFailedUnknown, LinkNotInitialized, FailAuthenticate,
        AuthenticationFailure, ListNotSaved, StartupFailed, TimeColonMissing, TimeStartsWithColon,
        TimeInvalid, DelayExceedsInterval, DelayExceedsHour, PeriodEmpty, PeriodOverMidnight,
        ScheduleExists, ConfirmDeleteSchedule, ConfirmDeleteHost, ConfirmDeleteMail, IpInvalid,
        PortInvalid, RestartForIp, RestartForPort, IpNotAttached, IpNotAttachedSmtp,
        CommandInvalid, DebugLevelWarning, DischargeCrNote, ForceSendParamsWarning, NumberTooLarge, FailSettings,
        FailGetSchedules, FailSaveSchedule, FailDeleteSchedule, FailGetHosts, FailDeleteHost,
        FailGetOutbox, FailDeleteMail, MailNotRemoved, FailGetStatus, FailSendCommand,
        FailDeleteHostDirectory, RasEntryGone, HostNameMissing, MailDomainMissing,
        RemoteHostMissing, HostNameTaken, DefaultDomainTaken, UucpTimeoutTooShort,
        ShareSpoolDirectory, ScriptNameHasPath, ScriptNameIllegal, RemoteHostChanged,
        HostLookupTooLong, IllegalBaudrate, DisplayNameMissing, FailTapiLocations,
        FailTapiDevices, FailRasEntries, FailGetScript, FailSaveScript, ScriptTooLarge,
        ScriptNotRead, PasswordsDiffer, PasswordEmpty, FailNewLogin, FailGetScriptFiles};
    const char* windows[] = {
        "start", "main-window", "lists", "frmLogin", "servername", "configuration",
        "loginaccount", "schedule", "system", "admin", "logs", "options", "smtpserver",
        "smtpforward", "uucpdaemon", "uucphosts", "view", "outbox", "uucpmonitor", "EditForm",
        "ScheduleForm", "NewLoginForm", "ScriptFileForm", "HostSetupForm", "GeneralPage",
        "TransportPage", "LoginPage", "LoginScriptPage", "ConnectionPage", "ModemForm",
        "AboutForm"};
    // clang-format on
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

class HelpWindowTest : public ConsoleTest {
protected:
    HelpWindowTest() {
        folder.write("Tollwick.hlp", "@topic start\n@title Översikt\n@keywords overview, common\n"
                                     "See [login](login) and [nothing](gone).\n"
                                     "@topic login\n@title Logging in\n"
                                     "@keywords password, common\n"
                                     "# First steps\nType the **password**.\n");
        folder.write("Tollwick.cnt", "Getting started\n  Overview = start\n  Logging in = login\n");
    }
    bool open(const char* file, const char* contents = "Tollwick.cnt") {
        return help.open(folder.text(file), folder.text(contents));
    }
    // The first line of the page, and what is selected in the contents.
    std::string shown() {
        const std::string page = textOf(help, "HelpPage");
        const auto items = child<QTreeWidget>(help, "HelpContents")->selectedItems();
        return page.substr(0, page.find('\n')) +
               (items.isEmpty() ? "" : " / " + items.first()->text(0).toStdString());
    }

    HelpWindow help{StringTable(kEnglish)};
};

TEST_F(HelpWindowTest, ShowsATopicOrTheFirstOneOrThatThereIsNone) {
    EXPECT_FALSE(open("missing.hlp"));
    help.showTopic("login");
    EXPECT_EQ(shown(), "The help file could not be found.");
    EXPECT_TRUE(open("Tollwick.hlp", "missing.cnt"));
    EXPECT_EQ(shown(), "Översikt / Översikt") << "contents made from the topics";
    EXPECT_TRUE(open("Tollwick.hlp"));
    help.showTopic("login");
    EXPECT_EQ(shown(), "First steps / Logging in");
    help.showTopic("gone");
    EXPECT_EQ(shown(), "Översikt / Overview");
    EXPECT_TRUE(child<QToolButton>(help, "HelpBack")->isEnabled());
    EXPECT_TRUE(open("Tollwick.hlp"));
    EXPECT_FALSE(child<QToolButton>(help, "HelpBack")->isEnabled());
}

TEST_F(HelpWindowTest, ContentsIndexSearchAndLinksLeadToTopics) {
    child<QLineEdit>(help, "HelpIndexFilter")->setText("password");
    ASSERT_TRUE(open("Tollwick.hlp"));
    EXPECT_TRUE(child<QListWidget>(help, "HelpIndex")->item(0)->isHidden()) << "filtered anew";
    auto* contents = child<QTreeWidget>(help, "HelpContents");
    contents->setCurrentItem(contents->topLevelItem(0)->child(1));
    EXPECT_EQ(shown(), "First steps / Logging in");
    contents->setCurrentItem(contents->topLevelItem(0)); // a heading, which has no page
    EXPECT_EQ(shown(), "First steps / Getting started");
    auto* index = child<QListWidget>(help, "HelpIndex");
    child<QLineEdit>(help, "HelpIndexFilter")->setText("OVER");
    EXPECT_TRUE(index->item(3)->isHidden());
    index->setCurrentRow(2);
    EXPECT_EQ(shown(), "Översikt / Overview");
    auto* words = child<QLineEdit>(help, "HelpSearchText");
    words->setText("PASSWORD type");
    QTest::keyClick(words, Qt::Key_Return);
    EXPECT_EQ(shown(), "First steps / Logging in");

    help.show();
    help.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
    QTest::keySequence(&help, QKeySequence::Find);
    EXPECT_TRUE(words->hasFocus());
    EXPECT_EQ(words->selectedText(), "PASSWORD type");
    help.showTopic("start");
    emit child<QTextBrowser>(help, "HelpPage")->anchorClicked(QUrl("login"));
    EXPECT_FALSE(child<QToolButton>(help, "HelpForward")->isEnabled());
    QTest::keyClick(&help, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown(), "Översikt / Overview");
    QTest::keyClick(&help, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(shown(), "First steps / Logging in");
    QTest::keyClick(&help, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

} // namespace
} // namespace tollwick
