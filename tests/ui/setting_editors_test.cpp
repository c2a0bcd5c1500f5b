#include "tests/ui/support/console_test.h"
#include "ui/common/icons.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>

namespace tollwick {
namespace {

using simulator::Server;

struct Box {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    std::optional<Text> text = {}; // no box
};

// A setting that is edited as a text.
struct TextEdit {
    const char* node;
    int row;
    const char* key;
    const char* icon;
    Text caption, label;
    const char* before;
    const char* refused; // nullptr: nothing is
    Box refusal;
    const char* typed;
    Box notice;
    const char* shown; // in the list
};

using T = Text;
constexpr auto kPlain = QMessageBox::NoIcon;
// clang-format off
const TextEdit kTextEdits[] = {
    {"admin",       0, "adminip",              "netadress32",   T::EditIpCaption,     T::EditIpLabel,       "127.0.0.1",   "256.1.1.1",   {kPlain, T::IpInvalid},           "10.1.300.3",      {kCritical, T::RestartForIp},           "10.1.300.3"},
    {"admin",       1, "adminport",            "portin32",      T::EditPortCaption,   T::EditPortLabel,     "542",         "0",           {kCritical, T::PortInvalid},      "80abc",           {kExclamation, T::RestartForPort},      "80"},
    {"smtpserver",  0, "SmtpServiceIp",        "netadress32",   T::EditIpCaption,     T::EditIpLabel,       "127.0.0.1",   "1.2.3",       {kCritical, T::IpInvalid},        " 127.0.0.1",      {kExclamation, T::RestartForIp},        " 127.0.0.1"},
    {"smtpserver",  1, "SmtpServicePort",      "portin32",      T::EditPortCaption,   T::EditPortLabel,     "25",          "32767",       {kCritical, T::PortInvalid},      "32766",           {kExclamation, T::RestartForPort},      "32766"},
    {"smtpforward", 0, "smtpforwardip",        "netadress32",   T::EditIpCaption,     T::EditIpLabel,       "192.0.2.10",  "mail",        {kCritical, T::IpInvalid},        "1..2.3",          {},                                     "1..2.3"},
    {"smtpforward", 1, "smtpforwardport",      "portin32",      T::EditPortCaption,   T::EditPortLabel,     "2525",        "smtp",        {kCritical, T::PortInvalid},      "2526.5",          {},                                     "2526"},
    {"options",     0, "docviewer",            "paper32",       T::DocViewerCaption,  T::DocViewerLabel,    "notepad.exe", nullptr,       {},                               " C:\\läs?.exe",   {},                                     " C:\\läs?.exe"},
    {"uucpdaemon",  0, "uucppriorcmd",         "command32",     T::CommandCaption,    T::PriorCommandLabel, "",            "c:\\run.bat", {kCritical, T::CommandInvalid},   "start.bat -x å",  {},                                     "start.bat -x å"},
    {"uucpdaemon",  1, "uucpaftercmd",         "command32",     T::CommandCaption,    T::AfterCommandLabel, "rensa.bat",   "x|y",         {kCritical, T::CommandInvalid},   "\b",              {},                                     ""},
    {"uucpdaemon",  2, "remotedebugginglevel", "debug32",       T::DebugLevelCaption, T::DebugLevelLabel,   "3",           nullptr,       {},                               "  9 b ",          {kExclamation, T::DebugLevelWarning},   "9 b"},
    {"uucpdaemon",  2, "remotedebugginglevel", "debug32",       T::DebugLevelCaption, T::DebugLevelLabel,   "9 b",         nullptr,       {},                               "   ",             {},                                     ""}};
// clang-format on

class SettingEditorTest : public ConsoleTest {
protected:
    static void expectForm(QDialog& form, const char* icon, Text caption, Text label,
                           const std::string& text) {
        EXPECT_EQ(child<QLabel>(form, "EditIcon")->pixmap().toImage(),
                  imageIcon(icon).pixmap(32, 32).toImage());
        EXPECT_EQ(form.windowTitle().toStdString(), english(caption));
        EXPECT_EQ(textOf(form, "EditCaption"), english(label));
        EXPECT_EQ(focused(), "Edittext");
        EXPECT_EQ(child<QLineEdit>(form, "Edittext")->selectedText().toStdString(), text);
    }
    void expect(const Box& box) {
        if (box.text)
            boxes.expectBox(box.icon, english(*box.text) +
                                          (box.text == T::CommandInvalid ? " \\/*:?<>|" : ""));
    }
    std::string cell(int row) { return rowText(row).substr(rowText(row).find('|') + 1); }
    bool isOn(int row) { return rowText(row).find("squareselected") != std::string::npos; }
    SettingsRecord& settings() { return context().data.settings; }
};

TEST_F(SettingEditorTest, TextsAreCheckedSentAndShown) {
    logIn();
    int saved = 0;
    for (const TextEdit& edit : kTextEdits) {
        SCOPED_TRACE(edit.key + std::string(" from ") + edit.before);
        const SettingsRecord before = settings();
        select(edit.node, edit.row);
        std::vector<Act> acts;
        for (const char* text : {edit.refused, edit.typed})
            if (text)
                acts.emplace_back([&, text, is_first = acts.empty()](QDialog& form) {
                    EXPECT_EQ(saves(), saved);
                    expectForm(form, edit.icon, edit.caption, edit.label,
                               is_first ? edit.before : edit.refused);
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
        if (edit.notice.text == T::DebugLevelWarning)
            expect(edit.notice);
        inDialog("PropertiesMenu", typing("\n"));
        EXPECT_EQ(saves(), saved += 2);
        EXPECT_EQ(cell(edit.row), edit.shown);
    }
    EXPECT_EQ(site().settings.remote_debugging_level.bytes(), "");
}

TEST_F(SettingEditorTest, AFurtherAnswerOfTheServiceHidesTwoNewAddresses) {
    const std::tuple<const char*, Box, const char*> cases[] = {
        {"admin", {kCritical, T::RestartForIp}, "127.0.0.1"},
        {"smtpserver", {kExclamation, T::RestartForIp}, "127.0.0.1"},
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
                boxes.expectBox(kExclamation, T::DischargeCrNote,
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
                boxes.expectBox(kExclamation, T::ForceSendParamsWarning);
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
            expectForm(form, "log32", T::LogPeriodCaption, T::LogPeriodLabel,
                       before); // 0 is shown as nothing
            type(entered);
        });
        EXPECT_EQ(site().settings, last);
        EXPECT_EQ(cell(row), period);
        EXPECT_EQ(list().selectedRow(), row);
    }
    inDialog("PropertiesMenu", typing("32768\n"));
    EXPECT_EQ(info(), english(T::NumberTooLarge));
    EXPECT_EQ(cell(6), "8");
}

TEST_F(SettingEditorTest, WhatTheServiceCannotTakeIsNotTakenOrRefusedWithTheTextKept) {
    logIn();
    select("options", 0);
    QApplication::clipboard()->setText(QString::fromUtf8("run\xE2\x86\x92.b\xC5\xBC"
                                                         "at"));
    const std::string too_long(4096, 'x');
    inDialogs([this] { trigger("PropertiesMenu"); },
              {[&](QDialog& form) {
                   press(Qt::Key_V, Qt::ControlModifier);
                   EXPECT_EQ(textOf(form, "Edittext"), "run.bat");
                   EXPECT_EQ(info(), english(T::CharactersLeftOut) + "\u2192\u017c");
                   child<QLineEdit>(form, "Edittext")->setText(QString::fromStdString(too_long));
                   boxes.expectBox(kCritical, T::SettingTooLarge);
                   type("\n");
               },
               [&](QDialog& form) {
                   EXPECT_EQ(textOf(form, "Edittext"), too_long) << "for correction";
                   EXPECT_LE(form.width(), form.screen()->availableGeometry().width());
                   EXPECT_GT(form.width(), 600) << "as wide as the screen lets it be";
                   child<QLineEdit>(form, "Edittext")->setText(QString(2000, 'y'));
                   type("\n");
               }});
    EXPECT_EQ(site().settings.doc_viewer.text(), std::string(2000, 'y'));
}

} // namespace
} // namespace tollwick
