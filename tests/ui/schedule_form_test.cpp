#include "tests/ui/support/editor_test.h"
#include "ui/main/svg_icons.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace tollwick {
namespace {

using simulator::Server;

constexpr auto kExclamation = QMessageBox::Warning;
constexpr auto kCritical = QMessageBox::Critical;
constexpr const char* kFailure =
    "Unable to transmit data to the Tollwick Service!\nThe connection is terminated!";
constexpr const char* kExists = "This setting already exist!";
constexpr const char* kNoColon = "Invalid time, colon missing!";
constexpr const char* kInvalid = "Invalid time!";
constexpr const char* kDelayExceedsInterval = "Delay must be less than the selected interval!";

class ScheduleFormTest : public EditorTest {
protected:
    void add(const Act& act) {
        clickNode("schedule");
        inDialogs([this] { trigger("AddMenu"); }, {act});
    }
    void edit(int row, const Act& act) {
        select("schedule", row);
        inDialogs([this] { trigger("PropertiesMenu"); }, {act});
    }
    // Moves to the field as a click does, and replaces its text.
    static void fill(QDialog& form, const char* name, const char* text) {
        auto* field = child<QLineEdit>(form, name);
        ASSERT_TRUE(field->isEnabled()) << name;
        QTest::mouseClick(field, Qt::LeftButton);
        QCoreApplication::processEvents();
        press(Qt::Key_A, Qt::ControlModifier);
        if (*text)
            type(text);
        else
            press(Qt::Key_Delete);
        EXPECT_EQ(field->text(), text);
    }
    static void choose(QDialog& form, const char* option) {
        QTest::mouseClick(child<QRadioButton>(form, option), Qt::LeftButton);
    }
    static void pick(QDialog& form, const char* list, int position) {
        auto* box = child<QComboBox>(form, list);
        box->setFocus();
        press(Qt::Key_Home);
        for (int i = 0; i < position; ++i)
            press(Qt::Key_Down);
        EXPECT_EQ(box->currentIndex(), position);
    }
    // What the controls hold, in the order of the form; the option that is selected is marked.
    static std::string shown(QDialog& form) {
        std::string line = child<QComboBox>(form, "DayCombo")->currentText().toStdString();
        line += child<QRadioButton>(form, "TimedOption")->isChecked() ? "|*" : "|";
        line += child<QLineEdit>(form, "Timed")->text().toStdString();
        line += child<QRadioButton>(form, "IntervalOption")->isChecked() ? "|*" : "|";
        line += child<QComboBox>(form, "IntervalCombo")->currentText().toStdString();
        for (const char* name : {"BetweenFirst", "BetweenSecond", "Delay"})
            line += '|' + child<QLineEdit>(form, name)->text().toStdString();
        return line;
    }
    static void expectEnabled(QDialog& form, bool timed) {
        EXPECT_EQ(child<QLineEdit>(form, "Timed")->isEnabled(), timed);
        for (const char* name : {"IntervalCombo", "BetweenTxt1", "BetweenTxt2", "BetweenFirst",
                                 "BetweenSecond", "DelayTxt1", "DelayTxt2", "Delay"})
            EXPECT_EQ(child<QWidget>(form, name)->isEnabled(), !timed) << name;
    }
    static ScheduleRecord record(Integer identity, Integer day, Integer timed, Integer interval,
                                 const char* at, const char* first, const char* second,
                                 Integer delay, Long number) {
        ScheduleRecord record;
        record.identity = identity;
        record.day = day;
        record.timed = timed;
        record.interval = interval;
        record.at_time = at;
        record.between_first = first;
        record.between_second = second;
        record.delay = delay;
        record.record_number = number;
        return record;
    }
    std::vector<ScheduleRecord>& schedules() { return context().data.schedules; }
    int requests() { return requestCount(ObjectClass::Schedule) - 6; } // 6 at the login
};

TEST_F(ScheduleFormTest, ANewScheduleIsTypedSentAndShown) {
    logIn();
    select("schedule", 1);
    inDialogs(
        [this] { trigger("toolbar_addschedule"); }, {[&](QDialog& form) {
            EXPECT_EQ(form.windowTitle(), "Add schedule");
            EXPECT_EQ(shown(form), "Monday||*5 min|||0");
            expectEnabled(form, false);
            EXPECT_EQ(child<QComboBox>(form, "DayCombo")->count(), 10);
            EXPECT_EQ(child<QComboBox>(form, "IntervalCombo")->count(), 11);
            EXPECT_EQ(child<QComboBox>(form, "IntervalCombo")->itemText(9), "12 hou");
            EXPECT_EQ(
                child<QLabel>(form, "Image1")->pixmap(Qt::ReturnByValue).toImage(),
                imageIcon("schedule32").pixmap(QSize(32, 32), form.devicePixelRatioF()).toImage());

            // Along the tabs, from the day on.
            EXPECT_EQ(focused(), "DayCombo");
            type("w"); // Wednesday, then Weekdays
            EXPECT_EQ(child<QComboBox>(form, "DayCombo")->currentText(), "Wednesday");
            for (int i = 0; i < 3 && focused() != "IntervalCombo"; ++i)
                press(Qt::Key_Tab); // past the options
            press(Qt::Key_Down);
            press(Qt::Key_Tab);
            EXPECT_EQ(focused(), "BetweenFirst");
            type("8:5");
            press(Qt::Key_Tab);
            EXPECT_EQ(focused(), "BetweenSecond");
            type("17:00");
            press(Qt::Key_Tab);
            EXPECT_EQ(focused(), "Delay");
            type("7.5"); // replaces the 0
            EXPECT_EQ(shown(form), "Wednesday||*10 min|8:5|17:00|7.5");
            press(Qt::Key_Return);
        }});

    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Add, ObjectClass::Schedule),
              record(-1, 2, 0, 1, "", "08:50", "17:00", 8, 0));
    const ScheduleRecord kept = record(1, 2, 0, 1, "", "08:50", "17:00", 8, 10);
    EXPECT_EQ(site().schedules.back(), kept);
    ASSERT_EQ(schedules().size(), 6U);
    EXPECT_EQ(schedules().back(), kept) << "as the reply tells it";
    EXPECT_EQ(listed().size(), 7U);
    EXPECT_EQ(rowText(5), "setting schedule Wednesday|Every: 10 min|08:50 - 17:00|8");
    EXPECT_EQ(list().selectedRow(), 1);

    // It is found by its number from now on.
    edit(5, [&](QDialog& form) {
        EXPECT_EQ(shown(form), "Wednesday||*10 min|08:50|17:00|8");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Save, ObjectClass::Schedule), kept);
    EXPECT_EQ(schedules().size(), 6U);
}

TEST_F(ScheduleFormTest, OneOptionDisablesTheFieldsOfTheOther) {
    logIn();
    add([&](QDialog& form) {
        for (const bool timed : {true, false, true}) {
            choose(form, timed ? "TimedOption" : "IntervalOption");
            expectEnabled(form, timed);
        }
        fill(form, "Timed", "7:3ö"); // every key is taken
        choose(form, "IntervalOption");
        fill(form, "Delay", "1");
        choose(form, "TimedOption");
        fill(form, "Timed", "7:3");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Add, ObjectClass::Schedule),
              record(-1, 0, 1, 0, "07:30", "", "", 1, 0));
    EXPECT_EQ(rowText(5), "setting schedule Monday|At: 07:30||1");
}

TEST_F(ScheduleFormTest, AClickSelectsAFieldButItsMenuDoesNot) {
    logIn();
    add([](QDialog& form) {
        auto* delay = child<QLineEdit>(form, "Delay");
        QTest::mouseClick(delay, Qt::LeftButton);
        EXPECT_TRUE(waitUntil([&] { return delay->selectedText() == "0"; }));
        type("1");
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(),
                                delay->mapToGlobal(QPoint()));
        QApplication::sendEvent(delay, &event);
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_TRUE(menu);
        QTest::keyClick(menu, Qt::Key_Escape);
        ASSERT_FALSE(QApplication::activePopupWidget());
        QCoreApplication::processEvents();
        type("2");
        EXPECT_EQ(delay->text(), "12");
        press(Qt::Key_Escape);
    });
}

TEST_F(ScheduleFormTest, AnEditedScheduleKeepsItsPlaceAndRow) {
    onServer([](Server& s) {
        s.site().schedules[3].unnamed_8 = 81;
        s.site().schedules[3].unnamed_15 = 152;
        s.site().schedules[3].unnamed_29 = 293;
        s.site().schedules[3].unnamed_35 = "as it came";
    });
    logIn();
    ScheduleRecord expected = schedules()[3];
    edit(3, [&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Edit schedule");
        EXPECT_EQ(shown(form), "Weekends|00:00|*2 hour|09:00|21:00|0");
        pick(form, "DayCombo", 6);
        fill(form, "Delay", "59");
        QTest::mouseClick(child<QPushButton>(form, "OkButton"), Qt::LeftButton);
    });
    expected.day = 6;
    expected.delay = 59;
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Save, ObjectClass::Schedule), expected);
    EXPECT_EQ(schedules()[3], expected);
    EXPECT_EQ(site().schedules[3], expected);
    EXPECT_EQ(rowText(3), "setting schedule Sunday|Every: 2 hour|09:00 - 21:00|59");
    EXPECT_EQ(list().selectedRow(), 3);
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(info(), "Ready");
}

TEST_F(ScheduleFormTest, OpensInEveryWayAndACancelChangesNothing) {
    logIn();
    select("schedule", 2);
    const std::vector<ScheduleRecord> before = schedules();
    const Lines rows = listed();
    int ways = 0;
    for (const std::function<void()>& way : std::initializer_list<std::function<void()>>{
             [&] { trigger("PropertiesMenu"); },
             [&] { trigger("toolbar_properties"); },
             [&] { clickInContextMenu("PropertiesMenu"); },
             [&] { doubleClickRow(2); },
             [&] { QTest::keyClick(&list(), Qt::Key_Return); },
             [&] { trigger("AddMenu"); },
             [&] { clickInContextMenu("AddMenu"); },
         })
        inDialogs(way, {[&](QDialog& form) {
                      EXPECT_EQ(shown(form), ways < 5 ? "Weekdays|00:00|*15 min|08:00|17:00|5"
                                                      : "Monday||*5 min|||0");
                      pick(form, "DayCombo", 5);
                      fill(form, "Delay", "abc");
                      if (++ways % 2 == 0)
                          press(Qt::Key_Escape);
                      else
                          QTest::mouseClick(child<QPushButton>(form, "CancelButton"),
                                            Qt::LeftButton);
                  }});
    EXPECT_EQ(schedules(), before);
    EXPECT_EQ(listed(), rows);
    EXPECT_EQ(list().selectedRow(), 2);
    EXPECT_EQ(requests(), 0);
}

TEST_F(ScheduleFormTest, ARefusalLeavesTheFormWithTheFocusWhereItIsWrong) {
    logIn();
    add([&](QDialog& form) {
        const auto expectRefused = [&](QMessageBox::Icon icon, const char* text,
                                       const char* focus) {
            boxes.expectBox(icon, text, [&](QMessageBox&) { EXPECT_TRUE(form.isVisible()); });
            child<QWidget>(form, "OkButton")->setFocus();
            press(Qt::Key_Return);
            EXPECT_TRUE(boxes.done());
            EXPECT_TRUE(form.isVisible());
            EXPECT_EQ(focused(), focus) << text;
        };
        expectRefused(kExclamation, kNoColon, "BetweenFirst");
        fill(form, "BetweenFirst", ":30");
        expectRefused(kExclamation, "Time cannot start with colon!", "BetweenFirst");
        fill(form, "BetweenFirst", "24:00");
        expectRefused(kExclamation, kInvalid, "BetweenFirst");
        fill(form, "BetweenFirst", "9:3");
        expectRefused(kExclamation, kNoColon, "BetweenSecond");
        EXPECT_EQ(shown(form), "Monday||*5 min|09:30||0") << "what passed is completed";
        fill(form, "BetweenSecond", "12:60");
        expectRefused(kExclamation, kInvalid, "BetweenSecond");
        fill(form, "BetweenSecond", "9:3");
        expectRefused(kExclamation, "Start and end-time cannot be the same!", "BetweenFirst");
        EXPECT_EQ(shown(form), "Monday||*5 min|09:30|09:30|0");
        fill(form, "BetweenSecond", "02:00");
        expectRefused(kExclamation, "Period may not stretch over midnight!", "BetweenSecond");

        // The delay comes before the times.
        fill(form, "Delay", "5");
        expectRefused(kExclamation, kDelayExceedsInterval, "Delay");
        pick(form, "IntervalCombo", 6);
        fill(form, "Delay", "60");
        expectRefused(kExclamation, "Delay must be less than one hour", "Delay");
        pick(form, "IntervalCombo", 10);
        fill(form, "Delay", "0");
        expectRefused(kExclamation, kDelayExceedsInterval, "Delay");
        pick(form, "IntervalCombo", 2);
        fill(form, "Delay", "14");

        choose(form, "TimedOption");
        fill(form, "Timed", "1230");
        expectRefused(kExclamation, kNoColon, "Timed");

        // A duplicate of the first schedule but for the interval and the period, then a full one.
        pick(form, "DayCombo", 7);
        choose(form, "IntervalOption");
        fill(form, "BetweenFirst", "08:00");
        fill(form, "BetweenSecond", "17:00");
        choose(form, "TimedOption");
        fill(form, "Timed", "00:00");
        choose(form, "IntervalOption");
        EXPECT_EQ(shown(form), "Weekdays|00:00|*15 min|08:00|17:00|14");
        expectRefused(kCritical, kExists, "DayCombo");
        expectRefused(kCritical, kExists, "DayCombo"); // it is still a new one
        EXPECT_EQ(requests(), 0);
        EXPECT_EQ(schedules().size(), 5U);
        choose(form, "TimedOption");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(sent<ScheduleRecord>(Operation::Add, ObjectClass::Schedule),
              record(-1, 7, 1, 2, "00:00", "08:00", "17:00", 14, 0));
    EXPECT_EQ(schedules().size(), 6U);
}

TEST_F(ScheduleFormTest, AScheduleMayBecomeTheCopyOfAnother) {
    logIn();
    edit(1, [&](QDialog& form) {
        pick(form, "DayCombo", 7);
        fill(form, "Timed", "7:30");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(rowText(1), rowText(0));
    EXPECT_EQ(list().selectedRow(), 1);
    EXPECT_EQ(site().schedules[1].record_number, 2);
}

TEST_F(ScheduleFormTest, ADelayPast16BitsIsLoggedAndTheFormStays) {
    onServer([](Server& s) { s.site().schedules[0].interval = 99; }); // none in the list
    logIn();
    const std::vector<ScheduleRecord> before = schedules();
    const std::size_t lines = logged().size();
    edit(0, [&](QDialog& form) {
        EXPECT_EQ(shown(form), "Weekdays|*07:30||00:00|23:59|0");
        choose(form, "IntervalOption");
        fill(form, "Delay", "40000");
        press(Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        ASSERT_EQ(logged().size(), lines + 1);
        EXPECT_EQ(logged().back().substr(0, 17), "Overflow ; (6/102");
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(schedules(), before);
    EXPECT_EQ(requests(), 0);
    edit(0, [&](QDialog& form) {
        pick(form, "DayCombo", 1);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(schedules()[0].day, 1);
}

TEST_F(ScheduleFormTest, AFailureEndsTheConnectionAndChangesNothing) {
    for (const Failure failure : kFailures)
        for (const bool is_new : {false, true}) {
            SCOPED_TRACE(std::to_string(static_cast<int>(failure)) + (is_new ? " new" : " old"));
            onServer([](Server& s) {
                s.faults() = {};
                s.site() = simulator::sampleSite();
            });
            logIn();
            select("schedule", 0);
            stopTimer();
            const std::vector<ScheduleRecord> before = schedules();
            const Lines rows = listed();
            const Act change = [&](QDialog& form) {
                choose(form, "TimedOption");
                fill(form, "Timed", "8:8");
                press(Qt::Key_Return);
            };
            failing(failure, ObjectClass::Schedule, kFailure, [&] {
                inDialogs([&] { trigger(is_new ? "AddMenu" : "PropertiesMenu"); }, {change});
            });
            EXPECT_FALSE(context().link.isOpen());
            EXPECT_EQ(schedules(), before);
            EXPECT_EQ(listed(), rows);
            tick();
            EXPECT_TRUE(isLoggedOut());
            window().menuTimer()->start();
        }
}

TEST_F(ScheduleFormTest, AnyAnswerButDoneIsAFailure) {
    logIn();
    onServer([](Server& s) { s.faults().result = result::EndOfList; });
    boxes.expectBox(kCritical, kFailure);
    edit(0, [](QDialog&) { press(Qt::Key_Return); });
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(ScheduleFormTest, AConnectionLostBehindTheFormFailsTheSave) {
    for (const bool is_new : {false, true}) {
        logIn();
        select("schedule", 4);
        const std::vector<ScheduleRecord> before = schedules();
        boxes.expectBox(kCritical, kFailure);
        inDialogs([&] { trigger(is_new ? "AddMenu" : "PropertiesMenu"); }, {[&](QDialog& form) {
                      onServer([](Server& s) { s.closeConnections(); });
                      EXPECT_TRUE(isLoggedOut());
                      choose(form, "TimedOption");
                      fill(form, "Timed", "8:8");
                      press(Qt::Key_Return);
                  }});
        EXPECT_EQ(schedules(), before);
        EXPECT_EQ(site().schedules, before);
        EXPECT_TRUE(isLoggedOut());
    }
}

TEST_F(ScheduleFormTest, SpeaksSwedish) {
    set(setting::CountryCode, "4000");
    logIn();
    boxes.expectBox(kExclamation, "Ogiltig tid, kolon saknas!");
    boxes.expectBox(kExclamation, "Fördröjningen måste vara kortare än det valda intervallet!");
    add([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), "Lägg till schema");
        EXPECT_EQ(child<QRadioButton>(form, "TimedOption")->text(), "Klockslag");
        pick(form, "DayCombo", 9);
        pick(form, "IntervalCombo", 9);
        EXPECT_EQ(shown(form), "Varje dag||*12 tim|||0");
        press(Qt::Key_Return);
        fill(form, "BetweenFirst", "0:0");
        fill(form, "BetweenSecond", "23:59");
        pick(form, "IntervalCombo", 0);
        fill(form, "Delay", "5");
        press(Qt::Key_Return);
        fill(form, "Delay", "");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(rowText(5), "setting schedule Varje dag|Varje: 5 min|00:00 - 23:59|0");
    select("schedule", 5);
    failing(Failure::Refused, ObjectClass::Schedule,
            "Det går inte att skicka data till Tollwick-tjänsten!\nAnslutningen har brutits!",
            [this] { edit(5, [](QDialog&) { press(Qt::Key_Return); }); });
}

} // namespace
} // namespace tollwick
