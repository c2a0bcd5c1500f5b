#include "tests/ui/support/console_test.h"
#include "ui/main/svg_icons.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>

namespace tollwick {
namespace {

using simulator::Server;

struct Box {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    const char* text = nullptr; // no box
};
constexpr const char* kIpInvalid = "The specified IP-number is invalid!";
constexpr const char* kIpRestart =
    "The Tollwick service need to restarted for the IP-number change to take effect!";
constexpr Box kBadPort{kCritical, "The port-number specified is invalid!"};
constexpr Box kPortRestart{
    kExclamation, "The Tollwick service need to restarted for the Port change to take effect!"};
constexpr Box kBadCommand{kCritical, "This command may not contain Path and/or driveletter. Nor "
                                     "may it contain any of these characters \\/*:?<>|"};
constexpr Box kDebugLevel{kExclamation, "Warning! Do not use this option without prior contact "
                                        "with your ISP! It will increase logging at the ISP Site."};
constexpr const char* kDischargeCr =
    "Note! Only use this option if you have confirmed that your ISP UUCP Daemon does not handle "
    "CRLF correctly - this usually shows when remote recipients get attachments that cannot be "
    "extracted.";
constexpr const char* kForceSendParams =
    "Warning!! This option is only known to be supported by later versions of Taylor UUCP daemons "
    "and it is not covered by UUCP standards. By using it, you override the setting your ISP has "
    "set for receiving. Use at your own risk!";

// A setting that is edited as a text.
struct TextEdit {
    const char* node;
    int row;
    const char* key;
    const char* form; // its caption, label and picture
    const char* before;
    const char* refused; // nullptr: nothing is
    Box refusal;
    const char* typed;
    Box notice;
    const char* shown; // in the list
};

// clang-format off
constexpr const char* kIp = "Edit IP-number|IP-Number:|netadress32";
constexpr const char* kPort = "Edit Port|Port:|portin32";
constexpr const char* kPrior = "Select command|Commandline to run before UUCP transport:|command32";
constexpr const char* kAfter = "Select command|Commandline to run after UUCP transport:|command32";
constexpr const char* kPeriod =
    "Logging period|Number of days that the log should cover:|log32";
const TextEdit kTextEdits[] = {
    {"admin", 0, "adminip", kIp, "127.0.0.1", "256.1.1.1", {QMessageBox::NoIcon, kIpInvalid},
     "10.1.300.3", {kCritical, kIpRestart}, "10.1.300.3"},
    {"admin", 1, "adminport", kPort, "542", "0", kBadPort, "80abc", kPortRestart, "80"},
    {"smtpserver", 0, "SmtpServiceIp", kIp, "127.0.0.1", "1.2.3", {kCritical, kIpInvalid},
     " 127.0.0.1", {kExclamation, kIpRestart}, " 127.0.0.1"},
    {"smtpserver", 1, "SmtpServicePort", kPort, "25", "32767", kBadPort, "32766", kPortRestart,
     "32766"},
    {"smtpforward", 0, "smtpforwardip", kIp, "192.0.2.10", "mail", {kCritical, kIpInvalid},
     "1..2.3", {}, "1..2.3"},
    {"smtpforward", 1, "smtpforwardport", kPort, "2525", "smtp", kBadPort, "2526.5", {}, "2526"},
    {"options", 0, "docviewer", "Change docviewer|Document viewer:|paper32", "notepad.exe",
     nullptr, {}, " C:\\läs?.exe", {}, " C:\\läs?.exe"},
    {"uucpdaemon", 0, "uucppriorcmd", kPrior, "", "c:\\run.bat", kBadCommand, "start.bat -x å", {},
     "start.bat -x å"},
    {"uucpdaemon", 1, "uucpaftercmd", kAfter, "rensa.bat", "x|y", kBadCommand, "\b", {}, ""},
    {"uucpdaemon", 2, "remotedebugginglevel", "Selecty level|Remote debugging level:|debug32", "3",
     nullptr, {}, "  9 b ", kDebugLevel, "9 b"}};
// clang-format on

class SettingEditorTest : public ConsoleTest {
protected:
    static void expectForm(QDialog& form, const QString& texts, const std::string& text) {
        const QStringList parts = texts.split('|');
        EXPECT_EQ(form.windowTitle(), parts[0]);
        EXPECT_EQ(child<QLabel>(form, "EditCaption")->text(), parts[1]);
        EXPECT_EQ(child<QLabel>(form, "EditIcon")->pixmap(Qt::ReturnByValue).toImage(),
                  imageIcon(parts[2].toStdString())
                      .pixmap(QSize(32, 32), form.devicePixelRatioF())
                      .toImage());
        EXPECT_EQ(focused(), "Edittext");
        EXPECT_EQ(child<QLineEdit>(form, "Edittext")->selectedText().toStdString(), text);
    }
    void expect(const Box& box) {
        if (box.text)
            boxes.expectBox(box.icon, box.text);
    }
    std::string cell(int row) { return rowText(row).substr(rowText(row).find('|') + 1); }
    bool isOn(int row) { return rowText(row).find("squareselected") != std::string::npos; }
    SettingsRecord& settings() { return context().data.settings; }
};

class TextEditTest : public SettingEditorTest, public testing::WithParamInterface<TextEdit> {};

TEST_P(TextEditTest, IsCheckedSentAndShown) {
    const TextEdit& edit = GetParam();
    logIn();
    const SettingsRecord before = settings();
    select(edit.node, edit.row);
    std::vector<Act> acts;
    for (const char* text : {edit.refused, edit.typed})
        if (text)
            acts.emplace_back([&, text, is_first = acts.empty()](QDialog& form) {
                EXPECT_EQ(saves(), 0);
                expectForm(form, edit.form, is_first ? edit.before : edit.refused);
                type(text + std::string("\n"));
            });
    expect(edit.refusal);
    expect(edit.notice);
    inDialogs([this] { trigger("PropertiesMenu"); }, acts);
    EXPECT_EQ(list().selectedKey(), edit.key);
    EXPECT_EQ(cell(edit.row), edit.shown);
    EXPECT_NE(settings(), before);
    EXPECT_EQ(settings(), site().settings);
    EXPECT_EQ(info(), "Ready");
    // Confirmed unchanged it is sent without a notice, but for the level, if there is one.
    if (edit.notice.text == kDebugLevel.text)
        expect(kDebugLevel);
    inDialog("PropertiesMenu", typing("\n"));
    EXPECT_EQ(saves(), 2);
    EXPECT_EQ(cell(edit.row), edit.shown);
}

INSTANTIATE_TEST_SUITE_P(, TextEditTest, testing::ValuesIn(kTextEdits),
                         [](const auto& test) { return test.param.key; });

TEST_F(SettingEditorTest, AFurtherAnswerOfTheServiceHidesTwoNewAddresses) {
    const std::tuple<const char*, Box, const char*> cases[] = {
        {"admin", {kCritical, kIpRestart}, "127.0.0.1"},
        {"smtpserver", {kExclamation, kIpRestart}, "127.0.0.1"},
        {"smtpforward", {}, "1.1.1.1"}};
    logIn();
    onServer([](Server& s) { s.site().settings_save_answer = result::SettingsAnswer8; });
    for (const auto& [node, notice, shown] : cases) {
        select(node, 0);
        expect(notice);
        inDialog("PropertiesMenu", typing("1.1.1.1\n"));
        EXPECT_EQ(cell(0), shown) << node;
    }
}

TEST_F(SettingEditorTest, ALongTextIsKeptAndALineBreakIsNotTaken) {
    const std::string viewer(1503, 'v');
    onServer([&](Server& s) { s.site().settings.doc_viewer = viewer; });
    logIn();
    select("options", 0);
    inDialog("PropertiesMenu", typing("\n"));
    EXPECT_EQ(site().settings.doc_viewer.text(), viewer);
    QApplication::clipboard()->setText("a\r\nb\n");
    inDialog("PropertiesMenu", [](QDialog&) {
        press(Qt::Key_V, Qt::ControlModifier);
        type("\n");
    });
    EXPECT_EQ(site().settings.doc_viewer.text(), "ab");
}

TEST_F(SettingEditorTest, SwitchesAreFlippedSentAndShown) {
    onServer([](Server& s) { s.site().settings.allow_priority = 1; }); // anything but 0 is a yes
    logIn();
    int saved = 0;
    for (const auto& [node, row] :
         {std::pair{"options", 1}, {"options", 2}, {"uucpdaemon", 3}, {"logs", 0}, {"logs", 3}})
        for (const char* way : {"double click", "Toggmenu", "PropertiesMenu"}) {
            SCOPED_TRACE(node + std::to_string(row) + way);
            if (*node == 'l' && *way == 'P') // where a log has its period
                continue;
            select(node, row);
            const bool was_on = isOn(row);
            if (*node == 'u' && !was_on)
                boxes.expectBox(kExclamation, kDischargeCr,
                                [&](QMessageBox&) { EXPECT_EQ(saves(), saved); });
            *way == 'd' ? clickRow(row, true) : trigger(way);
            EXPECT_EQ(saves(), ++saved);
            EXPECT_NE(isOn(row), was_on);
            EXPECT_EQ(settings(), site().settings);
            EXPECT_EQ(list().selectedRow(), row);
        }
}

TEST_F(SettingEditorTest, ForcedSendParametersAreSentWhenTheyDifferedFromTheOtherSwitch) {
    logIn();
    select("uucpdaemon", 4);
    int saved = 0;
    for (const Integer discharge_cr : {kFalse, kTrue})
        for (const Integer before : {kFalse, kTrue}) {
            settings().discharge_cr = discharge_cr;
            settings().force_send_params = before;
            if (before == kFalse)
                boxes.expectBox(kExclamation, kForceSendParams);
            trigger("Toggmenu");
            EXPECT_EQ(isOn(4), before == kFalse);
            saved += before != discharge_cr;
            EXPECT_EQ(saves(), saved) << discharge_cr << before;
        }
}

TEST_F(SettingEditorTest, ALogPeriodReachesTheServiceWithTheNextSave) {
    logIn();
    for (const auto& [row, before, entered, period] : {std::tuple{0, "30", "101.5 days\n", "102"},
                                                       {6, "7", "abc\n", "0"},
                                                       {6, "", "8\n", "8"}}) {
        select("logs", row);
        const SettingsRecord last = settings();
        inDialog("PropertiesMenu", [&](QDialog& form) {
            expectForm(form, kPeriod, before); // 0 is shown as nothing
            type(entered);
        });
        EXPECT_EQ(site().settings, last);
        EXPECT_EQ(cell(row), period);
        EXPECT_EQ(list().selectedRow(), row);
    }
    boxes.expectBox(kExclamation, kNumberTooLarge);
    inDialog("PropertiesMenu", typing("32768\n"));
    EXPECT_EQ(cell(6), "8");
}

TEST_F(SettingEditorTest, AnEmptyDebuggingLevelGivesNoWarning) {
    logIn();
    select("uucpdaemon", 2);
    inDialog("PropertiesMenu", typing("   \n"));
    EXPECT_EQ(site().settings.remote_debugging_level.bytes(), "");
}

} // namespace
} // namespace tollwick
