#include "app/run_time_error.h"
#include "ui/dialogs/schedule_rules.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

const std::vector<ScheduleInterval> kIntervals = scheduleIntervals(StringTable(kEnglish));
constexpr int kEvery5Min = 0, kEvery15Min = 2, kEvery1Hour = 5, kEvery2Hours = 6, kNoInterval = 10;

TEST(ScheduleRules, TimesAreCheckedAndCompleted) {
    struct {
        std::string text;
        std::optional<Text> problem;
        std::string completed;
    } const cases[] = {
        {"07:03", {}, "07:03"},
        {"7:3", {}, "07:30"}, // the "0" stands behind
        {"8:5", {}, "08:50"},
        {"7:30", {}, "07:30"},
        {"07:3", {}, "07:30"},
        {"0:0", {}, "00:00"},
        {"23:59", {}, "23:59"},
        {"12:", {}, "12:"},       // empty minutes are 0 and have no character to complete
        {"x:y", {}, "0x:y0"},     // no numbers count as 0
        {" 7:30", {}, " 7:30"},   // two characters
        {"007:30", {}, "007:30"}, // three
        {"12:30:45", {}, "12:30:45"},
        {"22.5:00", {}, "22.5:00"},
        {"", Text::TimeColonMissing, ""},
        {"1230", Text::TimeColonMissing, "1230"},
        {":30", Text::TimeStartsWithColon, ":30"},
        {":", Text::TimeStartsWithColon, ":"},
        {"24:00", Text::TimeInvalid, "24:00"},
        {"23.5:00", Text::TimeInvalid, "23.5:00"},
        {"-1:00", Text::TimeInvalid, "-1:00"},
        {"12:60", Text::TimeInvalid, "12:60"},
        {"12:-1", Text::TimeInvalid, "12:-1"},
        {"9:99", Text::TimeInvalid, "9:99"}, // untouched
        {"99999:00", Text::TimeInvalid, "99999:00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE('"' + c.text + '"');
        std::string text = c.text;
        EXPECT_EQ(timeProblem(text), c.problem);
        EXPECT_EQ(text, c.completed);
    }
}

ScheduleEntry interval(int position, const char* delay, const char* first = "08:00",
                       const char* second = "17:00") {
    return {3, true, position, "", first, second, delay};
}
ScheduleEntry timed(const char* at, int position = kEvery5Min, const char* delay = "0") {
    return {3, false, position, at, "", "", delay};
}

TEST(ScheduleRules, TheFirstProblemOfAnEntryIsFound) {
    using F = ScheduleField;
    using T = Text;
    struct Problem {
        T text;
        F field;
        bool beeps;
    };
    struct {
        ScheduleEntry entry;
        std::optional<Problem> problem;
    } const cases[] = {
        // The delay against its interval, then against the hour.
        {interval(kEvery15Min, "14"), {}},
        {interval(kEvery15Min, "14.5"), Problem{T::DelayExceedsInterval, F::Delay, true}},
        {interval(kEvery15Min, "15"), Problem{T::DelayExceedsInterval, F::Delay, true}},
        {interval(kEvery15Min, ""), {}},
        {interval(kEvery15Min, "abc"), {}},
        {interval(kEvery15Min, "-1"), {}},
        {interval(kEvery1Hour, "59"), {}},
        {interval(kEvery1Hour, "60"), Problem{T::DelayExceedsInterval, F::Delay, true}},
        {interval(kEvery2Hours, "59"), {}},
        {interval(kEvery2Hours, "60"), Problem{T::DelayExceedsHour, F::Delay, true}},
        {interval(kEvery2Hours, "120"), Problem{T::DelayExceedsInterval, F::Delay, true}},
        {interval(kEvery2Hours, "99999"), Problem{T::DelayExceedsInterval, F::Delay, true}},
        // The empty interval leaves no delay but a negative one.
        {interval(kNoInterval, "0"), Problem{T::DelayExceedsInterval, F::Delay, true}},
        {interval(kNoInterval, ""), Problem{T::DelayExceedsInterval, F::Delay, true}},
        {interval(kNoInterval, "-1"), {}},
        {interval(-1, "1000"), {}}, // none selected: not checked
        // Checked for a timed one, too, and before the times.
        {timed("1230", kEvery5Min, "5"), Problem{T::DelayExceedsInterval, F::Delay, true}},
        {timed("", kNoInterval), Problem{T::DelayExceedsInterval, F::Delay, true}},
        // A timed one has one time to check, an interval two.
        {timed("12:30"), {}},
        {timed("1230"), Problem{T::TimeColonMissing, F::Timed, false}},
        {timed(":3"), Problem{T::TimeStartsWithColon, F::Timed, false}},
        {timed("24:00"), Problem{T::TimeInvalid, F::Timed, false}},
        {interval(0, "0", "", ""), Problem{T::TimeColonMissing, F::BetweenFirst, false}},
        {interval(0, "0", "24:00", "x"), Problem{T::TimeInvalid, F::BetweenFirst, false}},
        {interval(0, "0", "08:00", "17"), Problem{T::TimeColonMissing, F::BetweenSecond, false}},
        {interval(0, "0", "08:00", ":"), Problem{T::TimeStartsWithColon, F::BetweenSecond, false}},
        // The period.
        {interval(0, "0", "10:00", "10:00"), Problem{T::PeriodEmpty, F::BetweenFirst, true}},
        {interval(0, "0", "9:5", "09:50"), Problem{T::PeriodEmpty, F::BetweenFirst, true}},
        {interval(0, "0", "22:00", "02:00"),
         Problem{T::PeriodOverMidnight, F::BetweenSecond, true}},
        {interval(0, "0", "08:30", "08:29"),
         Problem{T::PeriodOverMidnight, F::BetweenSecond, true}},
        {interval(0, "0", "8:5", "08:40"), Problem{T::PeriodOverMidnight, F::BetweenSecond, true}},
        {interval(0, "0", "9:00", "10:00"), {}},
        {interval(0, "0", "00:00", "23:59"), {}},
        {interval(0, "0", "11:00", "12:"), Problem{T::PeriodOverMidnight, F::BetweenSecond, true}},
    };
    for (const auto& c : cases) {
        ScheduleEntry entry = c.entry;
        SCOPED_TRACE(entry.timed + ' ' + entry.between_first + '-' + entry.between_second + " +" +
                     entry.delay);
        const std::optional<ScheduleProblem> problem = checkSchedule(entry, kIntervals);
        ASSERT_EQ(problem.has_value(), c.problem.has_value());
        if (!problem)
            continue;
        EXPECT_EQ(problem->text, c.problem->text);
        EXPECT_EQ(problem->field, c.problem->field);
        EXPECT_EQ(problem->beeps, c.problem->beeps);
    }
}

TEST(ScheduleRules, OnlyTheTimesThatWereCheckedAreCompleted) {
    ScheduleEntry entry = interval(kEvery15Min, "5", "8:5", "9:1");
    entry.timed = "7:3";
    EXPECT_FALSE(checkSchedule(entry, kIntervals));
    EXPECT_EQ(entry.between_first, "08:50");
    EXPECT_EQ(entry.between_second, "09:10");
    EXPECT_EQ(entry.timed, "7:3");

    entry.is_interval = false;
    entry.between_first = "8:5";
    EXPECT_FALSE(checkSchedule(entry, kIntervals));
    EXPECT_EQ(entry.timed, "07:30");
    EXPECT_EQ(entry.between_first, "8:5");

    // The first time stays completed when the second is refused.
    entry = interval(kEvery15Min, "5", "8:5", "930");
    EXPECT_TRUE(checkSchedule(entry, kIntervals));
    EXPECT_EQ(entry.between_first, "08:50");
}

TEST(ScheduleRules, EveryFieldIsStoredWhicheverOptionIsSelected) {
    ScheduleRecord record;
    record.identity = 1;
    record.unnamed_8 = 77;
    record.record_number = 1234;
    for (const bool is_interval : {false, true}) {
        storeSchedule({9, is_interval, 7, "7", "08:00:30", "17:00", "2.5"}, record);
        EXPECT_EQ(record.day, 9);
        EXPECT_EQ(record.timed, is_interval ? 0 : 1);
        EXPECT_EQ(record.interval, 7);
        EXPECT_EQ(record.at_time.bytes(), "7    ");
        EXPECT_EQ(record.between_first.bytes(), "08:00"); // cut
        EXPECT_EQ(record.between_second.bytes(), "17:00");
        EXPECT_EQ(record.delay, 2); // to the even neighbour
        EXPECT_EQ(record.identity, 1);
        EXPECT_EQ(record.unnamed_8, 77);
        EXPECT_EQ(record.record_number, 1234);
    }
    for (const char* delay : {"32768", "-40000", "1e9"}) {
        const ScheduleRecord before = record;
        try {
            storeSchedule({1, false, -1, "07:00", "", "", delay}, record);
            ADD_FAILURE() << delay;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), error_number::Overflow) << delay;
        }
        EXPECT_EQ(record, before) << delay;
    }
}

TEST(ScheduleRules, ARecordIsShownUnlessItIsOnItsWay) {
    const std::optional<ScheduleEntry> blank = entryOf(ScheduleRecord());
    ASSERT_TRUE(blank);
    EXPECT_EQ(blank->day, 0);
    EXPECT_TRUE(blank->is_interval);
    EXPECT_EQ(blank->interval, 0);
    EXPECT_EQ(blank->timed + blank->between_first + blank->between_second, "");
    EXPECT_EQ(blank->delay, "0");

    ScheduleRecord record;
    record.identity = 1;
    record.day = 8;
    record.timed = -1; // any number but 0
    record.interval = 4;
    record.at_time = " 7:30";
    record.between_first = "9:30";
    record.between_second = "17:00";
    record.delay = 12;
    const std::optional<ScheduleEntry> entry = entryOf(record);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->day, 8);
    EXPECT_FALSE(entry->is_interval);
    EXPECT_EQ(entry->interval, 4);
    EXPECT_EQ(entry->timed, "7:30"); // blanks are gone at both ends
    EXPECT_EQ(entry->between_first, "9:30");
    EXPECT_EQ(entry->between_second, "17:00");
    EXPECT_EQ(entry->delay, "12");

    record.identity = kTrue;
    EXPECT_FALSE(entryOf(record));
    const ScheduleEntry defaults;
    EXPECT_EQ(defaults.timed, "00:00");
    EXPECT_EQ(defaults.between_first, "00:00");
    EXPECT_EQ(defaults.between_second, "23:59");
}

TEST(ScheduleRules, SchedulesThatDifferInTheDelayAloneAreTheSame) {
    ScheduleRecord stored;
    storeSchedule(interval(kEvery15Min, "5"), stored);
    stored.identity = 1;
    stored.record_number = 7;
    const std::vector<ScheduleRecord> schedules{ScheduleRecord(), stored};

    ScheduleRecord record = stored;
    record.delay = 11;
    record.identity = 0;
    record.record_number = 0;
    EXPECT_TRUE(scheduleExists(record, schedules));
    EXPECT_FALSE(scheduleExists(record, {}));

    struct {
        const char* name;
        void (*change)(ScheduleRecord&);
    } const changes[] = {
        {"day", [](ScheduleRecord& r) { r.day = 4; }},
        {"timed", [](ScheduleRecord& r) { r.timed = 1; }},
        {"interval", [](ScheduleRecord& r) { r.interval = kEvery2Hours; }},
        {"at_time", [](ScheduleRecord& r) { r.at_time = "00:00"; }},
        {"between_first", [](ScheduleRecord& r) { r.between_first = "08:01"; }},
        {"between_second", [](ScheduleRecord& r) { r.between_second = "17:01"; }},
    };
    for (const auto& change : changes) {
        ScheduleRecord other = record;
        change.change(other);
        EXPECT_FALSE(scheduleExists(other, schedules)) << change.name;
    }

    // A time that the service padded with NULs is the same time.
    ScheduleRecord padded = stored;
    padded.at_time = FixedText<5>();
    EXPECT_TRUE(scheduleExists(record, std::span(&padded, 1)));
}

TEST(ScheduleRules, IntervalsAreCutToSixCharacters) {
    const auto shown = [](Integer lang_base) {
        std::string line;
        for (const ScheduleInterval& each : scheduleIntervals(StringTable(lang_base)))
            line += each.text + '=' + std::to_string(each.minutes) + ' ';
        return line;
    };
    EXPECT_EQ(shown(kEnglish),
              "5 min=5 10 min=10 15 min=15 20 min=20 30 min=30 1 hour=60 2 hour=120 "
              "3 hour=180 6 hour=360 12 hou=720 =0 ");
    EXPECT_EQ(shown(kSwedish), "5 min=5 10 min=10 15 min=15 20 min=20 30 min=30 1 tim=60 2 tim=120 "
                               "3 tim=180 6 tim=360 12 tim=720 =0 ");
}

} // namespace
} // namespace tollwick
