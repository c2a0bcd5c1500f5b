#include "tests/ui/support/editor_test.h"
#include "ui/main/setting_rows.h"
#include "ui/main/svg_icons.h"

#include <QLineEdit>
#include <QPushButton>

namespace tollwick {
namespace {

using simulator::Server;

constexpr const char* kFailure =
    "Unable to transfer new settings to the Tollwick Service!\nThe connection is terminated!";
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

struct Box {
    QMessageBox::Icon icon;
    const char* text;
};
using Change = void (*)(SettingsRecord&);

struct FormTexts {
    const char* caption;
    const char* label;
    const char* image;
};
constexpr FormTexts kIpForm{"Edit IP-number", "IP-Number:", "netadress32"};
constexpr FormTexts kPortForm{"Edit Port", "Port:", "portin32"};
constexpr FormTexts kDocViewerForm{"Change docviewer", "Document viewer:", "paper32"};
constexpr FormTexts kBeforeForm{"Select command",
                                "Commandline to run before UUCP transport:", "command32"};
constexpr FormTexts kAfterForm{"Select command",
                               "Commandline to run after UUCP transport:", "command32"};
constexpr FormTexts kLevelForm{"Selecty level", "Remote debugging level:", "debug32"};
constexpr FormTexts kPeriodForm{"Logging period",
                                "Number of days that the log should cover:", "log32"};

constexpr auto kPlain = QMessageBox::NoIcon;
constexpr auto kExclamation = QMessageBox::Warning;
constexpr auto kCritical = QMessageBox::Critical;

// What an editor does with its list when nothing was saved.
enum class Rebuild {
    AfterASave, // however that ended
    WhenDone,   // only when the service answered 1
    AfterACancelToo,
};

// A setting that is edited as a text.
struct TextEdit {
    const char* node;
    int row;
    const char* key;
    FormTexts form;
    const char* before;
    const char* refused; // nullptr: nothing is
    Box refusal;
    const char* typed;
    std::vector<Box> notices;
    Change change;    // what the typed text comes to
    const char* cell; // and how the list shows it
    Rebuild rebuild;
};

// clang-format off
const TextEdit kTextEdits[] = {
    {"admin", 0, "adminip", kIpForm, "127.0.0.1", "256.1.1.1", {kPlain, kIpInvalid},
     "10.1.300.3", {{kCritical, kRestartForIp}},
     [](SettingsRecord& s) { s.admin_ip = "10.1.300.3"; }, "10.1.300.3", Rebuild::WhenDone},
    {"admin", 1, "adminport", kPortForm, "542", "0", {kCritical, kPortInvalid},
     "80abc", {{kExclamation, kRestartForPort}},
     [](SettingsRecord& s) { s.admin_port = 80; }, "80", Rebuild::AfterASave},
    {"smtpserver", 0, "SmtpServiceIp", kIpForm, "127.0.0.1", "1.2.3", {kCritical, kIpInvalid},
     " 127.0.0.1", {{kExclamation, kRestartForIp}},
     [](SettingsRecord& s) { s.smtp_service_ip = " 127.0.0.1"; }, " 127.0.0.1", Rebuild::WhenDone},
    {"smtpserver", 1, "SmtpServicePort", kPortForm, "25", "32767", {kCritical, kPortInvalid},
     "32766", {{kExclamation, kRestartForPort}},
     [](SettingsRecord& s) { s.smtp_service_port = 32766; }, "32766", Rebuild::AfterASave},
    {"smtpforward", 0, "smtpforwardip", kIpForm, "192.0.2.10", "mail.example", {kCritical, kIpInvalid},
     "1..2.3", {},
     [](SettingsRecord& s) { s.smtp_forward_ip = "1..2.3"; }, "1..2.3", Rebuild::AfterASave},
    {"smtpforward", 1, "smtpforwardport", kPortForm, "2525", "smtp", {kCritical, kPortInvalid},
     "2526.5", {},
     [](SettingsRecord& s) { s.smtp_forward_port = 2526; }, "2526", Rebuild::AfterASave},
    {"options", 0, "docviewer", kDocViewerForm, "notepad.exe", nullptr, {},
     " C:\\Program\\läs?.exe ", {},
     [](SettingsRecord& s) { s.doc_viewer = " C:\\Program\\läs?.exe "; }, " C:\\Program\\läs?.exe",
     Rebuild::AfterASave},
    {"uucpdaemon", 0, "uucppriorcmd", kBeforeForm, "", "c:\\run.bat", {kCritical, kCommandInvalid},
     "start.bat -x å", {},
     [](SettingsRecord& s) { s.uucp_prior_command = "start.bat -x å"; }, "start.bat -x å",
     Rebuild::AfterACancelToo},
    {"uucpdaemon", 1, "uucpaftercmd", kAfterForm, "rensa.bat", "x|y", {kCritical, kCommandInvalid},
     "", {},
     [](SettingsRecord& s) { s.uucp_after_command = ""; }, "", Rebuild::AfterACancelToo},
    {"uucpdaemon", 2, "remotedebugginglevel", kLevelForm, "3", nullptr, {},
     "  9 b ", {{kExclamation, kDebugLevel}},
     [](SettingsRecord& s) { s.remote_debugging_level = "9 b"; }, "9 b", Rebuild::AfterASave},
};
// clang-format on

class SettingEditorTest : public EditorTest {
protected:
    // Replaces the selected text and confirms.
    static void enter(const char* text) {
        if (*text)
            type(text);
        else
            press(Qt::Key_Delete);
        press(Qt::Key_Return);
    }
    static Act entering(const char* text) {
        return [text](QDialog&) { enter(text); };
    }
    static void cancel(QDialog&) { press(Qt::Key_Escape); }
    static void expectForm(QDialog& form, const FormTexts& texts, const char* text) {
        EXPECT_EQ(form.objectName(), "EditForm");
        EXPECT_EQ(form.windowTitle(), texts.caption);
        EXPECT_EQ(child<QLabel>(form, "EditCaption")->text(), texts.label);
        const QPixmap icon = child<QLabel>(form, "EditIcon")->pixmap(Qt::ReturnByValue);
        EXPECT_EQ(icon.toImage(),
                  imageIcon(texts.image).pixmap(QSize(32, 32), form.devicePixelRatioF()).toImage());
        EXPECT_EQ(focused(), "Edittext");
        auto* field = child<QLineEdit>(form, "Edittext");
        EXPECT_EQ(field->text(), text);
        EXPECT_EQ(field->selectedText(), text) << "typing replaces it";
    }
    void properties(const std::vector<Act>& acts) {
        inDialogs([this] { trigger("PropertiesMenu"); }, acts);
    }
    void expectBoxes(const std::vector<Box>& expected) {
        for (const Box& box : expected)
            boxes.expectBox(box.icon, box.text);
    }
    std::string cell(int row) {
        return list().model()->index(row, 1).data().toString().toStdString();
    }
    std::string image(int row) {
        return list().model()->index(row, 0).data(kImageRole).toString().toStdString();
    }
    int saves() { return requestCount(ObjectClass::Settings) - 1; } // 1 at the login
    SettingsRecord sentSettings() {
        return sent<SettingsRecord>(Operation::Save, ObjectClass::Settings);
    }
    SettingsRecord& settings() { return context().data.settings; }
    static SettingsRecord changed(SettingsRecord settings, Change change) {
        change(settings);
        return settings;
    }
};

class TextEditTest : public SettingEditorTest, public testing::WithParamInterface<TextEdit> {};

TEST_P(TextEditTest, IsCheckedSentAndShown) {
    const TextEdit& edit = GetParam();
    logIn();
    const SettingsRecord expected = changed(settings(), edit.change);
    select(edit.node, edit.row);
    std::vector<Act> acts;
    const char* shown = edit.before;
    if (edit.refused) {
        expectBoxes({edit.refusal});
        acts.push_back([&](QDialog& form) {
            expectForm(form, edit.form, edit.before);
            enter(edit.refused);
        });
        shown = edit.refused;
    }
    acts.push_back([&](QDialog& form) {
        EXPECT_EQ(saves(), 0);
        expectForm(form, edit.form, shown);
        enter(edit.typed);
    });
    expectBoxes(edit.notices);
    properties(acts);
    EXPECT_TRUE(boxes.done());

    EXPECT_EQ(saves(), 1);
    EXPECT_EQ(sentSettings(), expected);
    EXPECT_EQ(site().settings, expected);
    EXPECT_EQ(settings(), expected);
    EXPECT_EQ(list().selectedKey(), edit.key);
    EXPECT_EQ(cell(edit.row), edit.cell);
    EXPECT_EQ(info(), "Ready");
}

TEST_P(TextEditTest, ConfirmedUnchangedIsSentWithoutANotice) {
    const TextEdit& edit = GetParam();
    logIn();
    const SettingsRecord before = settings();
    select(edit.node, edit.row);
    if (std::string(edit.key) == "remotedebugginglevel") // which tells whenever there is a level
        expectBoxes(edit.notices);
    properties({[](QDialog& form) {
        QTest::mouseClick(child<QPushButton>(form, "OkButton"), Qt::LeftButton);
    }});
    EXPECT_EQ(saves(), 1);
    EXPECT_EQ(sentSettings(), before);
}

TEST_P(TextEditTest, ACancelSendsNothing) {
    const TextEdit& edit = GetParam();
    logIn();
    select(edit.node, edit.row);
    context().edit.EditResult = "from before";
    // Shows whether the list is rebuilt.
    edit.change(settings());
    const SettingsRecord before = settings();
    if (edit.refused) {
        expectBoxes({edit.refusal});
        properties({entering(edit.refused), cancel});
        EXPECT_EQ(context().edit.EditResult, edit.refused);
    }
    properties({[](QDialog& form) {
        type("other");
        QTest::mouseClick(child<QPushButton>(form, "CancelButton"), Qt::LeftButton);
    }});
    properties({[](QDialog& form) { form.close(); }});
    EXPECT_TRUE(context().edit.EditCancelled);
    if (!edit.refused) {
        EXPECT_EQ(context().edit.EditResult, "from before");
    }
    EXPECT_EQ(saves(), 0);
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(cell(edit.row), edit.rebuild == Rebuild::AfterACancelToo ? edit.cell : edit.before);
    EXPECT_EQ(list().selectedKey(), edit.key);
}

TEST_P(TextEditTest, OpensInEveryWay) {
    const TextEdit& edit = GetParam();
    logIn();
    select(edit.node, edit.row);
    std::vector<std::function<void()>> ways{
        [&] { trigger("PropertiesMenu"); },
        [&] { trigger("toolbar_properties"); },
        [&] { clickInContextMenu("PropertiesMenu"); },
        [&] { doubleClickRow(edit.row); },
        [&] { QTest::keyClick(&list(), Qt::Key_Return); },
    };
    if (action("Toggmenu")->isEnabled()) {
        ways.emplace_back([&] { trigger("Toggmenu"); });
        ways.emplace_back([&] { clickInContextMenu("Toggmenu"); });
    }
    for (const auto& way : ways)
        inDialogs(way, {[&](QDialog& form) {
                      expectForm(form, edit.form, edit.before);
                      press(Qt::Key_Escape);
                  }});
    EXPECT_EQ(saves(), 0);
}

TEST_P(TextEditTest, TheFurtherAnswersOfTheServiceMatterForTwoAddressesOnly) {
    const TextEdit& edit = GetParam();
    logIn();
    const SettingsRecord before = settings();
    const SettingsRecord expected = changed(before, edit.change);
    for (const Integer answer : {result::SettingsAnswer8, result::SettingsAnswer9}) {
        SCOPED_TRACE(answer);
        onServer([&](Server& s) { s.site().settings_save_answer = answer; });
        settings() = before;
        clickNode("view");
        select(edit.node, edit.row);
        expectBoxes(edit.notices);
        properties({entering(edit.typed)});
        EXPECT_EQ(settings(), expected);
        EXPECT_EQ(cell(edit.row), edit.rebuild == Rebuild::WhenDone ? edit.before : edit.cell);
        EXPECT_TRUE(context().link.isOpen());
    }
}

TEST_P(TextEditTest, AFailureEndsTheConnection) {
    const TextEdit& edit = GetParam();
    for (const Failure failure : kFailures) {
        SCOPED_TRACE(static_cast<int>(failure));
        onServer([](Server& s) {
            s.faults() = {};
            s.site() = simulator::sampleSite();
        });
        logIn();
        const SettingsRecord expected = changed(settings(), edit.change);
        select(edit.node, edit.row);
        stopTimer();
        expectBoxes(edit.notices);
        failing(failure, ObjectClass::Settings, kFailure,
                [&] { properties({entering(edit.typed)}); });
        EXPECT_FALSE(context().link.isOpen());
        // Until the next tick the console shows what it was told to set.
        EXPECT_EQ(settings(), expected);
        EXPECT_EQ(cell(edit.row), edit.rebuild == Rebuild::WhenDone ? edit.before : edit.cell);
        tick();
        EXPECT_TRUE(isLoggedOut());
        window().menuTimer()->start();
    }
}

INSTANTIATE_TEST_SUITE_P(, TextEditTest, testing::ValuesIn(kTextEdits),
                         [](const auto& test) { return test.param.key; });

struct Switch {
    const char* node;
    int row;
    const char* key;
    Integer SettingsRecord::*value;
    const char* notice; // when it is switched on
};

constexpr Switch kSwitches[] = {
    {"options", 1, "allowpriority", &SettingsRecord::allow_priority, nullptr},
    {"options", 2, "Scheduleactivated", &SettingsRecord::schedule_activated, nullptr},
    {"uucpdaemon", 3, "dischargecr", &SettingsRecord::discharge_cr, kDischargeCr},
    {"logs", 0, "maillogging", &SettingsRecord::mail_logging, nullptr},
    {"logs", 1, "uucptransferlogging", &SettingsRecord::uucp_transfer_logging, nullptr},
    {"logs", 2, "smtplogging", &SettingsRecord::smtp_logging, nullptr},
    {"logs", 3, "scriptlogging", &SettingsRecord::script_logging, nullptr},
    {"logs", 4, "comlogging", &SettingsRecord::com_logging, nullptr},
    {"logs", 5, "uucpcmdlogging", &SettingsRecord::uucp_command_logging, nullptr},
    {"logs", 6, "uucpadvlogging", &SettingsRecord::uucp_advanced_logging, nullptr},
};

class SwitchTest : public SettingEditorTest, public testing::WithParamInterface<Switch> {
protected:
    bool isLog() const { return std::string_view(GetParam().node) == "logs"; }
};

TEST_P(SwitchTest, IsFlippedInEveryWay) {
    const Switch& flipped = GetParam();
    onServer([&](Server& s) { s.site().settings.*flipped.value = 1; }); // any number but 0 is a yes
    logIn();
    SettingsRecord expected = settings();
    select(flipped.node, flipped.row);
    std::vector<std::function<void()>> ways{
        [&] { trigger("Toggmenu"); },
        [&] { clickInContextMenu("Toggmenu"); },
        [&] { doubleClickRow(flipped.row); },
        [&] { QTest::keyClick(&list(), Qt::Key_Return); },
    };
    if (!isLog()) {
        ways.emplace_back([&] { trigger("PropertiesMenu"); });
        ways.emplace_back([&] { trigger("toolbar_properties"); });
    }
    int saved = 0;
    for (const auto& way : ways) {
        expected.*flipped.value = expected.*flipped.value == kFalse ? kTrue : kFalse;
        if (expected.*flipped.value != kFalse && flipped.notice)
            boxes.expectBox(kExclamation, flipped.notice,
                            [&](QMessageBox&) { EXPECT_EQ(saves(), saved); });
        way();
        EXPECT_EQ(saves(), ++saved);
        EXPECT_EQ(sentSettings(), expected);
        EXPECT_EQ(settings(), expected);
        EXPECT_EQ(image(flipped.row),
                  expected.*flipped.value != kFalse ? "squareselected" : "square");
        EXPECT_EQ(list().selectedKey(), flipped.key);
        EXPECT_TRUE(boxes.done());
    }
}

INSTANTIATE_TEST_SUITE_P(, SwitchTest, testing::ValuesIn(kSwitches),
                         [](const auto& test) { return test.param.key; });

TEST_F(SettingEditorTest, ForcedSendParametersAreSentWhenTheyDifferedFromTheOtherSwitch) {
    logIn();
    select("uucpdaemon", 4);
    int saved = 0;
    for (const Integer discharge_cr : {kFalse, kTrue})
        for (const Integer before : {kFalse, kTrue, kFalse}) {
            SCOPED_TRACE(std::to_string(discharge_cr) + ' ' + std::to_string(before));
            settings().discharge_cr = discharge_cr;
            settings().force_send_params = before;
            if (before == kFalse)
                boxes.expectBox(kExclamation, kForceSendParams);
            trigger("Toggmenu");
            EXPECT_EQ(settings().force_send_params, before == kFalse ? kTrue : kFalse);
            EXPECT_EQ(image(4), before == kFalse ? "squareselected" : "square");
            if (before != discharge_cr) {
                ++saved;
                EXPECT_EQ(sentSettings(), settings());
            }
            EXPECT_EQ(saves(), saved);
        }
    EXPECT_EQ(list().selectedKey(), "forcesendparams");
}

TEST_F(SettingEditorTest, ALogPeriodReachesTheServiceWithTheNextSave) {
    constexpr Integer SettingsRecord::*kPeriods[] = {
        &SettingsRecord::mail_log_period,         &SettingsRecord::uucp_transfer_log_period,
        &SettingsRecord::smtp_log_period,         &SettingsRecord::script_log_period,
        &SettingsRecord::com_log_period,          &SettingsRecord::uucp_command_log_period,
        &SettingsRecord::uucp_advanced_log_period};
    logIn();
    SettingsRecord expected = settings();
    for (int row = 0; row < 7; ++row) {
        SCOPED_TRACE(row);
        select("logs", row);
        const std::string before = std::to_string(settings().*kPeriods[row]);
        const std::string typed = std::to_string(100 + row) + ".5 days";
        const auto open = [&] {
            if (row % 3 == 0)
                trigger("PropertiesMenu");
            else if (row % 3 == 1)
                trigger("toolbar_properties");
            else
                clickInContextMenu("PropertiesMenu");
        };
        inDialogs(open, {[&](QDialog& form) {
                      expectForm(form, kPeriodForm, before.c_str());
                      enter(typed.c_str());
                  }});
        EXPECT_EQ(saves(), row + 1);
        EXPECT_EQ(sentSettings(), expected) << "with the periods before it";
        const int period = 100 + row + row % 2; // halves to the even neighbour
        expected.*kPeriods[row] = static_cast<Integer>(period);
        EXPECT_EQ(settings(), expected);
        EXPECT_EQ(cell(row), std::to_string(period));
        EXPECT_EQ(list().selectedRow(), row);
    }
    trigger("Toggmenu");
    expected.uucp_advanced_logging = kTrue;
    EXPECT_EQ(sentSettings(), expected);
    EXPECT_EQ(site().settings, expected);
}

TEST_F(SettingEditorTest, ALogPeriodThatIsNoNumberIsZeroAndShownAsNothing) {
    logIn();
    select("logs", 2);
    properties({entering("abc")});
    EXPECT_EQ(settings().smtp_log_period, 0);
    EXPECT_EQ(cell(2), "0");
    properties({[](QDialog& form) {
        EXPECT_EQ(child<QLineEdit>(form, "Edittext")->text(), "");
        enter("-5");
    }});
    EXPECT_EQ(settings().smtp_log_period, -5);
    EXPECT_EQ(saves(), 2);

    settings().smtp_log_period = 44; // a cancel rebuilds the list, too
    properties({cancel});
    EXPECT_EQ(cell(2), "44");
    EXPECT_EQ(saves(), 2);
}

TEST_F(SettingEditorTest, ANumberPast16BitsIsLoggedAndTheConsoleGoesOn) {
    logIn();
    const SettingsRecord before = settings();
    const std::size_t lines = logged().size();
    const struct {
        const char* node;
        int row;
        const char* typed;
    } cases[] = {{"admin", 0, "40000.1.1.1"},
                 {"smtpserver", 0, "1.1.1.32768"},
                 {"smtpforward", 0, "1.99999.11111.1"},
                 {"logs", 0, "32768"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        select(c.node, c.row);
        const Lines shown = listed();
        properties({entering(c.typed)});
        EXPECT_EQ(listed(), shown);
        EXPECT_EQ(list().selectedRow(), c.row);
    }
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(saves(), 0);
    ASSERT_EQ(logged().size(), lines + std::size(cases));
    EXPECT_TRUE(logged()[lines].starts_with("Overflow ; (6/")) << logged()[lines];
    EXPECT_TRUE(logged().back().starts_with("Loop->Overflow ; (6/")) << logged().back();
    EXPECT_TRUE(context().link.isOpen());

    properties({entering("365")});
    EXPECT_EQ(saves(), 1);
    EXPECT_EQ(settings().mail_log_period, 365);
}

TEST_F(SettingEditorTest, AnEmptyDebuggingLevelGivesNoWarning) {
    logIn();
    select("uucpdaemon", 2);
    properties({entering("   ")});
    EXPECT_EQ(site().settings.remote_debugging_level.bytes(), "");
    EXPECT_EQ(saves(), 1);
}

TEST_F(SettingEditorTest, AFailedSwitchOrPeriodEndsTheConnection) {
    for (const Failure failure : kFailures)
        for (const char* command : {"Toggmenu", "PropertiesMenu"}) {
            SCOPED_TRACE(command + std::to_string(static_cast<int>(failure)));
            onServer([](Server& s) {
                s.faults() = {};
                s.site() = simulator::sampleSite();
            });
            logIn();
            select("logs", 3);
            stopTimer();
            failing(failure, ObjectClass::Settings, kFailure, [&] {
                if (command == std::string("Toggmenu"))
                    trigger(command);
                else
                    properties({entering("8")});
            });
            EXPECT_FALSE(context().link.isOpen());
            EXPECT_EQ(rowText(3), command == std::string("Toggmenu")
                                      ? "scriptlogging squareselected Script logging|7"
                                      : "scriptlogging square Script logging|8");
            EXPECT_EQ(site().settings.script_log_period, 7);
            tick();
            EXPECT_TRUE(isLoggedOut());
            window().menuTimer()->start();
        }
}

TEST_F(SettingEditorTest, AConnectionLostBehindTheDialogFailsTheSave) {
    logIn();
    select("uucpdaemon", 0);
    boxes.expectBox(kCritical, kFailure);
    properties({[this](QDialog&) {
        onServer([](Server& s) { s.closeConnections(); });
        EXPECT_TRUE(isLoggedOut());
        enter("run.bat");
    }});
    EXPECT_EQ(saves(), 0);
    EXPECT_TRUE(isLoggedOut());
    EXPECT_TRUE(boxes.done());
    logIn();
    EXPECT_EQ(settings(), simulator::sampleSite().settings);
}

TEST_F(SettingEditorTest, SpeakSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    select("admin", 0);
    constexpr FormTexts ip{"Redigera IP-nummer", "IP-nummer:", "netadress32"};
    boxes.expectBox(kPlain, "Det angivna IP-numret är ogiltigt!");
    properties({[&](QDialog& form) {
                    expectForm(form, ip, "127.0.0.1");
                    EXPECT_EQ(child<QPushButton>(form, "CancelButton")->text(), "&Avbryt");
                    enter("å");
                },
                [](QDialog& form) {
                    EXPECT_EQ(child<QLineEdit>(form, "Edittext")->text(), "å");
                    press(Qt::Key_A, Qt::AltModifier);
                    EXPECT_TRUE(waitUntil([&] { return !form.isVisible(); }));
                }});

    select("uucpdaemon", 1);
    boxes.expectBox(kCritical, "Kommandot får inte innehålla sökväg eller enhetsbokstav. Det får "
                               "inte heller innehålla något av dessa tecken \\/*:?<>|");
    properties({entering("städa/allt.bat"), entering("städa allt.bat")});
    EXPECT_EQ(sentSettings().uucp_after_command.text(), "städa allt.bat");

    failing(Failure::Refused, ObjectClass::Settings,
            "Det går inte att överföra nya inställningar till Tollwick-tjänsten!\n"
            "Anslutningen har brutits!",
            [this] { properties({entering("x")}); });
    EXPECT_TRUE(isLoggedOut());
}

} // namespace
} // namespace tollwick
