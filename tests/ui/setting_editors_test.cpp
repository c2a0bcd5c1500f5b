#include "tests/ui/support/console_test.h"
#include "ui/main/setting_rows.h"
#include "ui/main/svg_icons.h"

#include <QLineEdit>

namespace tollwick {
namespace {

using simulator::Server;
using S = SettingsRecord;

constexpr const char* kIpInvalid = "The specified IP-number is invalid!";
constexpr const char* kPortInvalid = "The port-number specified is invalid!";
constexpr const char* kRestartForIp =
    "The Tollwick service need to restarted for the IP-number change to take effect!";
constexpr const char* kRestartForPort =
    "The Tollwick service need to restarted for the Port change to take effect!";
constexpr const char* kCommandInvalid =
    "This command may not contain Path and/or driveletter. Nor may it contain any of these "
    "characters \\/*:?<>|";
constexpr const char* kDebugLevel = "Warning! Do not use this option without prior contact with "
                                    "your ISP! It will increase logging at the ISP Site.";
constexpr const char* kDischargeCr =
    "Note! Only use this option if you have confirmed that your ISP UUCP Daemon does not handle "
    "CRLF correctly - this usually shows when remote recipients get attachments that cannot be "
    "extracted.";
constexpr const char* kForceSendParams =
    "Warning!! This option is only known to be supported by later versions of Taylor UUCP daemons "
    "and it is not covered by UUCP standards. By using it, you override the setting your ISP has "
    "set for receiving. Use at your own risk!";

constexpr auto kPlain = QMessageBox::NoIcon;

// A setting that is edited as a text.
struct TextEdit {
    const char* node;
    int row;
    const char* key;
    std::array<const char*, 3> form; // caption, label and picture
    const char* before;
    const char* refused; // nullptr: nothing is
    QMessageBox::Icon icon;
    const char* refusal;
    const char* typed;
    QMessageBox::Icon notice_icon;
    const char* notice;           // nullptr: none
    void (*change)(S&);           // what the typed text comes to
    const char* cell;             // and how the list shows it
    bool rebuilds_when_done_only; // else after any answer of the service
    bool rebuilds_after_cancel;
};

// clang-format off
const TextEdit kTextEdits[] = {
    {"admin", 0, "adminip", {"Edit IP-number", "IP-Number:", "netadress32"}, "127.0.0.1",
     "256.1.1.1", kPlain, kIpInvalid, "10.1.300.3", kCritical, kRestartForIp,
     [](S& s) { s.admin_ip = "10.1.300.3"; }, "10.1.300.3", true, false},
    {"admin", 1, "adminport", {"Edit Port", "Port:", "portin32"}, "542",
     "0", kCritical, kPortInvalid, "80abc", kExclamation, kRestartForPort,
     [](S& s) { s.admin_port = 80; }, "80", false, false},
    {"smtpserver", 0, "SmtpServiceIp", {"Edit IP-number", "IP-Number:", "netadress32"}, "127.0.0.1",
     "1.2.3", kCritical, kIpInvalid, " 127.0.0.1", kExclamation, kRestartForIp,
     [](S& s) { s.smtp_service_ip = " 127.0.0.1"; }, " 127.0.0.1", true, false},
    {"smtpserver", 1, "SmtpServicePort", {"Edit Port", "Port:", "portin32"}, "25",
     "32767", kCritical, kPortInvalid, "32766", kExclamation, kRestartForPort,
     [](S& s) { s.smtp_service_port = 32766; }, "32766", false, false},
    {"smtpforward", 0, "smtpforwardip", {"Edit IP-number", "IP-Number:", "netadress32"},
     "192.0.2.10",
     "mail", kCritical, kIpInvalid, "1..2.3", kPlain, nullptr,
     [](S& s) { s.smtp_forward_ip = "1..2.3"; }, "1..2.3", false, false},
    {"smtpforward", 1, "smtpforwardport", {"Edit Port", "Port:", "portin32"}, "2525",
     "smtp", kCritical, kPortInvalid, "2526.5", kPlain, nullptr,
     [](S& s) { s.smtp_forward_port = 2526; }, "2526", false, false},
    {"options", 0, "docviewer", {"Change docviewer", "Document viewer:", "paper32"}, "notepad.exe",
     nullptr, kPlain, nullptr, " C:\\läs?.exe", kPlain, nullptr,
     [](S& s) { s.doc_viewer = " C:\\läs?.exe"; }, " C:\\läs?.exe", false, false},
    {"uucpdaemon", 0, "uucppriorcmd",
     {"Select command", "Commandline to run before UUCP transport:", "command32"}, "",
     "c:\\run.bat", kCritical, kCommandInvalid, "start.bat -x å", kPlain, nullptr,
     [](S& s) { s.uucp_prior_command = "start.bat -x å"; }, "start.bat -x å", false, true},
    {"uucpdaemon", 1, "uucpaftercmd",
     {"Select command", "Commandline to run after UUCP transport:", "command32"}, "rensa.bat",
     "x|y", kCritical, kCommandInvalid, "\b", kPlain, nullptr,
     [](S& s) { s.uucp_after_command = ""; }, "", false, true},
    {"uucpdaemon", 2, "remotedebugginglevel",
     {"Selecty level", "Remote debugging level:", "debug32"}, "3",
     nullptr, kPlain, nullptr, "  9 b ", kExclamation, kDebugLevel,
     [](S& s) { s.remote_debugging_level = "9 b"; }, "9 b", false, false},
};
// clang-format on

class SettingEditorTest : public ConsoleTest {
protected:
    static void expectForm(QDialog& form, const std::array<const char*, 3>& texts,
                           const std::string& text) {
        EXPECT_EQ(form.windowTitle(), texts[0]);
        EXPECT_EQ(textOf(form, "EditCaption"), texts[1]);
        EXPECT_EQ(child<QLabel>(form, "EditIcon")->pixmap(Qt::ReturnByValue).toImage(),
                  imageIcon(texts[2]).pixmap(QSize(32, 32), form.devicePixelRatioF()).toImage());
        EXPECT_EQ(focused(), "Edittext");
        EXPECT_EQ(textOf(form, "Edittext"), text);
        EXPECT_EQ(child<QLineEdit>(form, "Edittext")->selectedText().toStdString(), text);
    }
    void expectBoxIf(const char* text, QMessageBox::Icon icon) {
        if (text)
            boxes.expectBox(icon, text);
    }
    std::string cell(int row) { return rowText(row).substr(rowText(row).find('|') + 1); }
    std::string image(int row) {
        return list().model()->index(row, 0).data(kImageRole).toString().toStdString();
    }
    S sentSettings() { return sent<S>(Operation::Save, ObjectClass::Settings); }
    S& settings() { return context().data.settings; }
};

class TextEditTest : public SettingEditorTest, public testing::WithParamInterface<TextEdit> {};

TEST_P(TextEditTest, IsCheckedSentAndShown) {
    const TextEdit& edit = GetParam();
    logIn();
    const S before = settings();
    S expected = before;
    edit.change(expected);
    select(edit.node, edit.row);

    std::vector<Act> acts;
    for (const char* text : {edit.refused, edit.typed})
        if (text)
            acts.emplace_back([&, text, is_first = acts.empty()](QDialog& form) {
                EXPECT_EQ(saves(), 0);
                expectForm(form, edit.form, is_first ? edit.before : edit.refused);
                type(text + std::string("\n"));
            });
    expectBoxIf(edit.refusal, edit.icon);
    expectBoxIf(edit.notice, edit.notice_icon);
    properties(acts);
    EXPECT_TRUE(boxes.done());
    EXPECT_EQ(sentSettings(), expected);
    EXPECT_EQ(settings(), expected);
    EXPECT_EQ(list().selectedKey(), edit.key);
    EXPECT_EQ(cell(edit.row), edit.cell);
    EXPECT_EQ(info(), "Ready");

    // Confirmed unchanged it is sent without a notice, but for the level, if there is one.
    expectBoxIf(edit.notice == kDebugLevel ? kDebugLevel : nullptr, kExclamation);
    properties({[](QDialog& form) { clickOn(form, "OkButton"); }});
    EXPECT_EQ(sentSettings(), expected);
    // A further answer of the service matters for two addresses only. A cancel sends nothing.
    onServer([](Server& s) { s.site().settings_save_answer = result::SettingsAnswer8; });
    for (const bool is_cancelled : {false, true}) {
        settings() = before;
        clickNode("view");
        select(edit.node, edit.row);
        if (is_cancelled)
            edit.change(settings()); // shows whether the list is rebuilt
        else
            expectBoxIf(edit.notice, edit.notice_icon);
        properties({typing(edit.typed + std::string(is_cancelled ? "\x1b" : "\n"))});
        EXPECT_EQ(settings(), expected);
        EXPECT_EQ(cell(edit.row) == edit.cell,
                  is_cancelled ? edit.rebuilds_after_cancel : !edit.rebuilds_when_done_only);
    }
    EXPECT_TRUE(context().link.isOpen());
    EXPECT_EQ(saves(), 3);
}

INSTANTIATE_TEST_SUITE_P(, TextEditTest, testing::ValuesIn(kTextEdits),
                         [](const auto& test) { return test.param.key; });

TEST_F(SettingEditorTest, SwitchesAreFlippedSentAndShown) {
    // clang-format off
    const std::tuple<const char*, int, Integer S::*> switches[] = {
        {"options", 1, &S::allow_priority}, {"options", 2, &S::schedule_activated},
        {"uucpdaemon", 3, &S::discharge_cr},
        {"logs", 0, &S::mail_logging}, {"logs", 1, &S::uucp_transfer_logging},
        {"logs", 2, &S::smtp_logging}, {"logs", 3, &S::script_logging},
        {"logs", 4, &S::com_logging}, {"logs", 5, &S::uucp_command_logging},
        {"logs", 6, &S::uucp_advanced_logging}};
    // clang-format on
    for (const auto& [node, row, value] : switches) // any number but 0 is a yes
        onServer([&](Server& s) { s.site().settings.*value = 1; });
    logIn();
    S expected = settings();
    int saved = 0;
    for (const auto& [node, row, value] : switches)
        for (const int way : {0, 1, 2}) {
            SCOPED_TRACE(node + std::to_string(row) + " by " + std::to_string(way));
            select(node, row);
            expected.*value = expected.*value == kFalse ? kTrue : kFalse;
            if (value == &S::discharge_cr && expected.discharge_cr != kFalse)
                boxes.expectBox(kExclamation, kDischargeCr,
                                [&](QMessageBox&) { EXPECT_EQ(saves(), saved); });
            if (way == 0)
                clickRow(row, true);
            else // where a log has its period instead
                trigger(way == 1 && *node != 'l' ? "PropertiesMenu" : "Toggmenu");
            EXPECT_EQ(saves(), ++saved);
            EXPECT_EQ(sentSettings(), expected);
            EXPECT_EQ(image(row), expected.*value == kFalse ? "square" : "squareselected");
            EXPECT_EQ(list().selectedRow(), row);
        }
    EXPECT_EQ(settings(), expected);
}

TEST_F(SettingEditorTest, ForcedSendParametersAreSentWhenTheyDifferedFromTheOtherSwitch) {
    logIn();
    select("uucpdaemon", 4);
    int saved = 0;
    for (const Integer discharge_cr : {kFalse, kTrue})
        for (const Integer before : {kFalse, kTrue}) {
            SCOPED_TRACE(std::to_string(discharge_cr) + ' ' + std::to_string(before));
            settings().discharge_cr = discharge_cr;
            settings().force_send_params = before;
            if (before == kFalse)
                boxes.expectBox(kExclamation, kForceSendParams);
            trigger("Toggmenu");
            EXPECT_EQ(settings().force_send_params, before == kFalse ? kTrue : kFalse);
            EXPECT_EQ(image(4), before == kFalse ? "squareselected" : "square");
            saved += before != discharge_cr;
            EXPECT_EQ(saves(), saved);
        }
}

TEST_F(SettingEditorTest, ALogPeriodReachesTheServiceWithTheNextSave) {
    constexpr Integer S::*kPeriods[] = {&S::mail_log_period,         &S::uucp_transfer_log_period,
                                        &S::smtp_log_period,         &S::script_log_period,
                                        &S::com_log_period,          &S::uucp_command_log_period,
                                        &S::uucp_advanced_log_period};
    static constexpr std::array kPeriod{"Logging period",
                                        "Number of days that the log should cover:", "log32"};
    logIn();
    S expected = settings();
    for (int row = 0; row < 7; ++row) {
        select("logs", row);
        properties({[&](QDialog& form) {
            expectForm(form, kPeriod, std::to_string(expected.*kPeriods[row]));
            type(std::to_string(100 + row) + ".5 days\n");
        }});
        EXPECT_EQ(saves(), row + 1);
        EXPECT_EQ(sentSettings(), expected) << "with the periods before it";
        const int period = 100 + row + row % 2; // halves to the even neighbour
        expected.*kPeriods[row] = static_cast<Integer>(period);
        EXPECT_EQ(settings(), expected);
        EXPECT_EQ(cell(row), std::to_string(period));
        EXPECT_EQ(list().selectedRow(), row);
    }
    // No number is 0, which is shown as nothing; a cancel rebuilds the list, too.
    properties({typing("abc\n")});
    EXPECT_EQ(cell(6), "0");
    settings().uucp_advanced_log_period = 44;
    properties({typing("\x1b")});
    EXPECT_EQ(cell(6), "44");
    EXPECT_EQ(saves(), 8);
}

TEST_F(SettingEditorTest, ANumberPast16BitsIsLoggedAndTheConsoleGoesOn) {
    logIn();
    const S before = settings();
    const std::size_t lines = logged().size();
    for (const auto& [node, keys] : {std::pair{"admin", "40000.1.1.1\n"}, {"logs", "32768\n"}}) {
        select(node, 0);
        properties({typing(keys)});
    }
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(saves(), 0);
    ASSERT_EQ(logged().size(), lines + 2);
    EXPECT_TRUE(logged()[lines].starts_with("Overflow ; (6/")) << logged()[lines];
    EXPECT_TRUE(logged().back().starts_with("Loop->Overflow ; (6/")) << logged().back();
    // Nor does an empty level give a warning.
    select("uucpdaemon", 2);
    properties({typing("   \n")});
    EXPECT_EQ(site().settings.remote_debugging_level.bytes(), "");
}

TEST_F(SettingEditorTest, SpeakSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    select("admin", 0);
    boxes.expectBox(kPlain, "Det angivna IP-numret är ogiltigt!");
    const Act enter = [](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Redigera IP-nummer");
        EXPECT_EQ(textOf(form, "CancelButton"), "&Avbryt");
        textOf(form, "Edittext") == "å" ? press(Qt::Key_A, Qt::AltModifier) : type("å\n");
        EXPECT_TRUE(waitUntil([&] { return !form.isVisible(); }));
    };
    properties({enter, enter});
    select("uucpdaemon", 1);
    boxes.expectBox(kCritical, "Kommandot får inte innehålla sökväg eller enhetsbokstav. Det får "
                               "inte heller innehålla något av dessa tecken \\/*:?<>|");
    properties({typing("städa/allt.bat\n"), typing("städa allt.bat\n")});
    EXPECT_EQ(settings().uucp_after_command.text(), "städa allt.bat");
    failing(Failure::Refused, ObjectClass::Settings,
            "Det går inte att överföra nya inställningar till Tollwick-tjänsten!\n"
            "Anslutningen har brutits!",
            [this] { properties({typing("x\n")}); });
    EXPECT_TRUE(isLoggedOut());
}

} // namespace
} // namespace tollwick
