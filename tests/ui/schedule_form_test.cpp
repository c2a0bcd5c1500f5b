#include "tests/ui/support/console_test.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QRadioButton>

namespace tollwick {
namespace {

using simulator::Server;

class ScheduleFormTest : public ConsoleTest {
protected:
    void add(const Act& act) {
        clickNode("schedule");
        inDialog([this] { trigger("AddMenu"); }, act);
    }
    void edit(int row, const Act& act) {
        select("schedule", row);
        properties({act});
    }
    // Clicks an option, picks from a list by position, or replaces the text of a field.
    static void put(QDialog& form, const char* name, const char* text = "") {
        ASSERT_TRUE(child(form, name)->isEnabled()) << name;
        if (qobject_cast<QComboBox*>(child(form, name))) {
            child(form, name)->setFocus();
            press(Qt::Key_Home);
            for (int i = 0; i < std::stoi(text); ++i)
                press(Qt::Key_Down);
            return;
        }
        clickOn(form, name);
        if (qobject_cast<QLineEdit*>(child(form, name))) {
            QCoreApplication::processEvents();
            press(Qt::Key_A, Qt::ControlModifier);
            type(*text ? text : "\b");
        }
    }
    // What the controls hold, in the order of the form; the option that is selected is marked.
    static std::string shown(QDialog& form) {
        const auto mark = [&](const char* option) {
            return child<QRadioButton>(form, option)->isChecked() ? "|*" : "|";
        };
        return textOf(form, "DayCombo") + mark("TimedOption") + textOf(form, "Timed") +
               mark("IntervalOption") + textOf(form, "IntervalCombo") + '|' +
               textOf(form, "BetweenFirst") + '|' + textOf(form, "BetweenSecond") + '|' +
               textOf(form, "Delay");
    }
    static void expectEnabled(QDialog& form, bool timed) {
        EXPECT_EQ(child(form, "Timed")->isEnabled(), timed);
        for (const char* name : {"IntervalCombo", "BetweenTxt1", "BetweenTxt2", "BetweenFirst",
                                 "BetweenSecond", "DelayTxt1", "DelayTxt2", "Delay"})
            EXPECT_EQ(child(form, name)->isEnabled(), !timed) << name;
    }
    std::vector<ScheduleRecord>& schedules() { return context().data.schedules; }
};

TEST_F(ScheduleFormTest, ANewScheduleIsTypedSentAndShown) {
    logIn();
    select("schedule", 1);
    inDialog([this] { trigger("toolbar_addschedule"); },
             [&](QDialog& form) {
                 EXPECT_EQ(form.windowTitle(), "Add schedule");
                 EXPECT_EQ(shown(form), "Monday||*5 min|||0");
                 EXPECT_EQ(child<QComboBox>(form, "IntervalCombo")->count(), 11);
                 // A click selects a field, but the end of its menu does not.
                 clickOn(form, "Delay");
                 EXPECT_TRUE(
                     waitUntil([&] { return child<QLineEdit>(form, "Delay")->hasSelectedText(); }));
                 type("7");
                 QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, form.pos());
                 QApplication::sendEvent(child(form, "Delay"), &event);
                 ASSERT_TRUE(QApplication::activePopupWidget());
                 QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
                 QCoreApplication::processEvents();
                 type(".5");
                 EXPECT_EQ(textOf(form, "Delay"), "7.5");
                 for (const char* option : {"TimedOption", "IntervalOption"}) {
                     put(form, option);
                     expectEnabled(form, option[0] == 'T');
                 }
                 // Along the tabs, from the day on; w is Wednesday.
                 child(form, "DayCombo")->setFocus();
                 type("w\t\t");
                 EXPECT_EQ(focused(), "IntervalCombo");
                 press(Qt::Key_Down);
                 type("\t8:5\t17:00\n");
             });
    ScheduleRecord expected;
    expected.identity = -1;
    expected.day = 2;
    expected.interval = 1;
    expected.at_time = "";
    expected.between_first = "08:50";
    expected.between_second = "17:00";
    expected.delay = 8;
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Add, ObjectClass::Schedule), expected);
    expected.identity = 1;
    expected.record_number = 10;
    EXPECT_EQ(site().schedules.back(), expected);
    EXPECT_EQ(schedules(), site().schedules) << "as the reply tells it";
    EXPECT_EQ(listed().size(), 7U);
    EXPECT_EQ(rowText(5), "setting schedule Wednesday|Every: 10 min|08:50 - 17:00|8");
    EXPECT_EQ(list().selectedRow(), 1);

    // It is found by its number from now on.
    edit(5, [&](QDialog& form) {
        EXPECT_EQ(shown(form), "Wednesday||*10 min|08:50|17:00|8");
        type("\n");
    });
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Save, ObjectClass::Schedule), expected);
    EXPECT_EQ(schedules().size(), 6U);
    EXPECT_EQ(saves(), 2);
}

TEST_F(ScheduleFormTest, AnEditedScheduleKeepsItsPlaceAndRow) {
    onServer([](Server& s) {
        s.site().schedules[3].unnamed_8 = 81;
        s.site().schedules[3].unnamed_35 = "as it came";
        s.site().schedules[0].interval = 99; // none in the list
    });
    logIn();
    std::vector<ScheduleRecord> expected = schedules();
    edit(3, [&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Edit schedule");
        EXPECT_EQ(shown(form), "Weekends|00:00|*2 hour|09:00|21:00|0");
        put(form, "DayCombo", "6");
        put(form, "Delay", "59");
        clickOn(form, "OkButton");
    });
    expected[3].day = 6;
    expected[3].delay = 59;
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Save, ObjectClass::Schedule), expected[3]);
    EXPECT_EQ(rowText(3), "setting schedule Sunday|Every: 2 hour|09:00 - 21:00|59");
    EXPECT_EQ(list().selectedRow(), 3);
    EXPECT_EQ(info(), "Ready");

    // A delay past 16 bits is logged and the form stays.
    edit(0, [&](QDialog& form) {
        EXPECT_EQ(shown(form), "Weekdays|*07:30||00:00|23:59|0");
        put(form, "IntervalOption");
        put(form, "Delay", "40000\n");
        EXPECT_EQ(logged().back().substr(0, 17), "Overflow ; (6/102");
        type("\x1b");
    });
    EXPECT_EQ(schedules(), expected);
    EXPECT_EQ(site().schedules, expected);
    EXPECT_EQ(saves(), 1);

    // A schedule may become the copy of another.
    edit(1, [&](QDialog& form) {
        put(form, "DayCombo", "7");
        put(form, "Timed", "7:30\n");
    });
    EXPECT_EQ(rowText(1), rowText(0));
}

TEST_F(ScheduleFormTest, ARefusalLeavesTheFormWithTheFocusWhereItIsWrong) {
    constexpr auto kNone = QMessageBox::NoIcon; // Ok is not pressed yet
    // What is entered one after the other, what is told, and where the focus is then.
    // clang-format off
    const std::tuple<const char*, const char*, QMessageBox::Icon, const char*, const char*> steps[] = {
        {"IntervalOption", "", kExclamation, "Invalid time, colon missing!", "BetweenFirst"},
        {"BetweenFirst", ":30", kExclamation, "Time cannot start with colon!", "BetweenFirst"},
        {"BetweenFirst", "9:3", kExclamation, "Invalid time, colon missing!", "BetweenSecond"},
        {"BetweenSecond", "24:00", kExclamation, "Invalid time!", "BetweenSecond"},
        {"BetweenSecond", "9:3", kExclamation, "Start and end-time cannot be the same!", "BetweenFirst"},
        {"BetweenSecond", "2:0", kExclamation, "Period may not stretch over midnight!", "BetweenSecond"},
        // The delay comes before the times.
        {"Delay", "5", kExclamation, "Delay must be less than the selected interval!", "Delay"},
        {"IntervalCombo", "6", kNone, "", ""},
        {"Delay", "60", kExclamation, "Delay must be less than one hour", "Delay"},
        {"IntervalCombo", "2", kNone, "", ""},
        {"Delay", "14", kNone, "", ""},
        {"TimedOption", "", kNone, "", ""},
        {"Timed", "1230", kExclamation, "Invalid time, colon missing!", "Timed"},
        // A copy of the third schedule but for the delay; it is still a new one then.
        {"Timed", "00:00", kNone, "", ""},
        {"IntervalOption", "", kNone, "", ""},
        {"BetweenFirst", "08:00", kNone, "", ""},
        {"BetweenSecond", "17:00", kNone, "", ""},
        {"DayCombo", "7", kCritical, "This setting already exist!", "DayCombo"},
        {"IntervalOption", "", kCritical, "This setting already exist!", "DayCombo"}};
    // clang-format on
    logIn();
    add([&](QDialog& form) {
        for (const auto& [field, text, icon, refusal, focus] : steps) {
            SCOPED_TRACE(std::string(field) + ' ' + text);
            put(form, field, text);
            if (icon == kNone)
                continue;
            boxes.expectBox(icon, refusal);
            child(form, "OkButton")->setFocus();
            type("\n");
            EXPECT_TRUE(boxes.done());
            EXPECT_EQ(focused(), focus);
        }
        EXPECT_EQ(shown(form), "Weekdays|00:00|*15 min|08:00|17:00|14");
        EXPECT_EQ(saves(), 0);
        EXPECT_EQ(schedules().size(), 5U);
        put(form, "TimedOption");
        type("\n");
    });
    EXPECT_EQ(rowText(5), "setting schedule Weekdays|At: 00:00|08:00 - 17:00|14");
}

TEST_F(ScheduleFormTest, SpeaksSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    boxes.expectBox(kExclamation, "Ogiltig tid, kolon saknas!");
    add([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Lägg till schema");
        EXPECT_EQ(textOf(form, "TimedOption"), "Klockslag");
        put(form, "DayCombo", "9");
        put(form, "IntervalCombo", "9");
        EXPECT_EQ(shown(form), "Varje dag||*12 tim|||0");
        type("\n");
        put(form, "BetweenFirst", "0:0");
        put(form, "BetweenSecond", "23:59");
        put(form, "Delay", "");
        type("\n");
    });
    EXPECT_EQ(rowText(5), "setting schedule Varje dag|Varje: 12 tim|00:00 - 23:59|0");
    failing(Failure::Refused, ObjectClass::Schedule,
            "Det går inte att skicka data till Tollwick-tjänsten!\nAnslutningen har brutits!",
            [this] { edit(5, typing("\n")); });
}

} // namespace
} // namespace tollwick
