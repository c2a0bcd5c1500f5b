#include "tests/ui/support/console_test.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QRadioButton>

namespace tollwick {
namespace {

using simulator::Server;

class ScheduleFormTest : public ConsoleTest {
protected:
    // Opens the form on a new schedule (-1), or on one of the list.
    void inForm(int row, const Act& act) {
        row < 0 ? clickNode("schedule") : select("schedule", row);
        inDialog(row < 0 ? "AddMenu" : "PropertiesMenu", act);
    }
    // What the controls hold, in the order of the form; the option that is selected is marked.
    static std::string shown(QDialog& form) {
        std::string texts = child<QRadioButton>(form, "TimedOption")->isChecked() ? "At" : "Every";
        for (const char* name :
             {"DayCombo", "Timed", "IntervalCombo", "BetweenFirst", "BetweenSecond", "Delay"})
            texts += '|' + textOf(form, name);
        return texts;
    }
};

TEST_F(ScheduleFormTest, ANewScheduleIsTypedSentAndShown) {
    logIn();
    inForm(-1, [&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Add schedule");
        EXPECT_FALSE(child<QLabel>(form, "Image1")->pixmap().isNull());
        EXPECT_EQ(shown(form), "Every|Monday||5 min|||0");
        // A click selects a field, but the end of its menu does not.
        clickOn(form, "Delay");
        EXPECT_TRUE(waitUntil([&] { return child<QLineEdit>(form, "Delay")->hasSelectedText(); }));
        type("7");
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, form.pos());
        QApplication::sendEvent(child(form, "Delay"), &event);
        ASSERT_TRUE(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        QCoreApplication::processEvents();
        type(".5");
        for (const std::string option : {"TimedOption", "IntervalOption"}) {
            play(form, option);
            EXPECT_EQ(child(form, "Timed")->isEnabled(), option[0] == 'T');
            for (const char* name : {"IntervalCombo", "BetweenFirst", "BetweenSecond", "Delay"})
                EXPECT_EQ(child(form, name)->isEnabled(), option[0] == 'I') << name;
        }
        child(form, "DayCombo")->setFocus();
        type("w\t\t"); // Wednesday, and on along the tabs
        EXPECT_EQ(focused(), "IntervalCombo");
        press(Qt::Key_Down);
        type("\t8:5\t17:00\n");
    });
    ScheduleRecord expected;
    expected.identity = 1;
    expected.record_number = 10;
    expected.day = 2;
    expected.interval = 1;
    expected.at_time = "";
    expected.between_first = "08:50";
    expected.between_second = "17:00";
    expected.delay = 8;
    EXPECT_EQ(site().schedules.back(), expected);
    EXPECT_EQ(context().data.schedules, site().schedules) << "as the reply tells it";
    EXPECT_EQ(rowText(5), "setting schedule Wednesday|Every: 10 min|08:50 - 17:00|8");
    inForm(5, typing("\n")); // it is found by its number from now on
    EXPECT_EQ(saves(), 2);
    EXPECT_EQ(site().schedules.size(), 6U);
}

TEST_F(ScheduleFormTest, AnEditedScheduleKeepsItsPlaceAndRow) {
    onServer([](Server& s) {
        s.site().schedules[3].unnamed_35 = "as it came";
        s.site().schedules[0].interval = 99; // none in the list
        s.site().schedules[0].day = 12;
    });
    logIn();
    std::vector<ScheduleRecord> expected = context().data.schedules;
    inForm(3, [&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Edit schedule");
        EXPECT_EQ(shown(form), "Every|Weekends|00:00|2 hour|09:00|21:00|0");
        play(form, "DayCombo=6|Delay=59|OkButton");
    });
    expected[3].day = 6;
    expected[3].delay = 59;
    EXPECT_EQ(rowText(3), "setting schedule Sunday|Every: 2 hour|09:00 - 21:00|59");
    EXPECT_EQ(list().selectedRow(), 3);
    EXPECT_EQ(info(), "Ready");
    inForm(0, [&](QDialog& form) { // and the form stays
        EXPECT_EQ(shown(form), "At||07:30||00:00|23:59|0");
        play(form, "IntervalOption|Delay=40000\n|?Delay");
        EXPECT_EQ(info(), english(Text::NumberTooLarge));
        EXPECT_EQ(logged().back().substr(0, 17), "Overflow ; (6/101");
        type("\x1b");
    });
    // A position that its list lacks stays unless another one is selected.
    inForm(0, [](QDialog& form) { play(form, "OkButton"); });
    EXPECT_EQ(context().data.schedules, expected);
    EXPECT_EQ(site().schedules, expected);
}

TEST_F(ScheduleFormTest, ARefusalLeavesTheFormWithTheFocusWhereItIsWrong) {
    // clang-format off
    const std::tuple<const char*, Text, const char*> steps[] = {
        {"BetweenFirst=9:3", Text::TimeColonMissing, "BetweenSecond"},
        {"BetweenSecond=9:3", Text::PeriodEmpty, "BetweenFirst"},
        {"BetweenSecond=10:0|Delay=5", Text::DelayExceedsInterval, "Delay"},
        {"IntervalCombo=2|Delay=14|TimedOption|Timed=1230", Text::TimeColonMissing, "Timed"},
        // A copy of the third schedule but for the delay; it is still a new one then.
        {"Timed=00:00|IntervalOption|BetweenFirst=08:00|BetweenSecond=17:00|DayCombo=7",
         Text::ScheduleExists, "DayCombo"}};
    // clang-format on
    logIn();
    inForm(-1, [&](QDialog& form) {
        for (const auto& [entries, refusal, focus] : steps) {
            boxes.expectBox(focus == std::string("DayCombo") ? kCritical : kExclamation, refusal);
            play(form, std::string(entries) + "|OkButton|?" + focus);
            EXPECT_TRUE(boxes.done());
        }
        EXPECT_EQ(shown(form), "Every|Weekdays|00:00|15 min|08:00|17:00|14");
        EXPECT_EQ(saves(), 0);
        play(form, "TimedOption|OkButton");
    });
    EXPECT_EQ(rowText(5), "setting schedule Weekdays|At: 00:00|08:00 - 17:00|14");
}

} // namespace
} // namespace tollwick
