#include "tests/support/error_of.h"
#include "ui/dialogs/schedule_rules.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

const std::vector<ScheduleInterval> kIntervals = scheduleIntervals(StringTable(kEnglish));
constexpr int kEvery15Min = 2, kEvery1Hour = 5, kEvery2Hours = 6, kNoInterval = 10;

TEST(ScheduleRules, TimesAreCheckedAndCompleted) {
    // clang-format off
    const std::pair<const char*, const char*> good[] = {
        {"07:03", "07:03"}, {"7:3", "07:30"}, // the "0" stands behind
        {"7:30", "07:30"}, {"07:3", "07:30"}, {"0:0", "00:00"}, {"23:59", "23:59"},
        {"12:", "12:"},       // empty minutes are 0 and have no character to complete
        {"x:y", "0x:y0"},     // no numbers count as 0
        {" 7:30", " 7:30"}, {"007:30", "007:30"}, {"12:30:45", "12:30:45"}, {"22.5:00", "22.5:00"}};
    const std::pair<const char*, Text> bad[] = {
        {"", Text::TimeColonMissing}, {"1230", Text::TimeColonMissing},
        {":30", Text::TimeStartsWithColon}, {":", Text::TimeStartsWithColon},
        {"24:00", Text::TimeInvalid}, {"23.5:00", Text::TimeInvalid}, {"-1:00", Text::TimeInvalid},
        {"12:60", Text::TimeInvalid}, {"12:-1", Text::TimeInvalid}, {"9:99", Text::TimeInvalid},
        {"99999:00", Text::TimeInvalid}};
    // clang-format on
    for (const auto& [typed, completed] : good) {
        std::string text = typed;
        EXPECT_EQ(timeProblem(text), std::nullopt) << typed;
        EXPECT_EQ(text, completed);
    }
    for (const auto& [typed, problem] : bad) {
        std::string text = typed;
        EXPECT_EQ(timeProblem(text), problem) << typed;
        EXPECT_EQ(text, typed); // untouched
    }
}

ScheduleEntry interval(int position, const char* delay, const char* first = "08:00",
                       const char* second = "17:00") {
    return {3, true, position, "", first, second, delay};
}
ScheduleEntry timed(const char* at, int position = 0, const char* delay = "0") {
    return {3, false, position, at, "", "", delay};
}

TEST(ScheduleRules, TheFirstProblemOfAnEntryIsFound) {
    using F = ScheduleField;
    using T = Text;
    // clang-format off
    const std::pair<ScheduleEntry, std::optional<std::tuple<T, F, bool>>> cases[] = {
        // The delay against its interval, then against the hour; whether it beeps.
        {interval(kEvery15Min, "14"), {}}, {interval(kEvery15Min, ""), {}},
        {interval(kEvery15Min, "abc"), {}}, {interval(kEvery15Min, "-1"), {}},
        {interval(kEvery1Hour, "59"), {}}, {interval(kEvery2Hours, "59"), {}},
        {interval(kEvery15Min, "14.5"), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kEvery15Min, "15"), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kEvery1Hour, "60"), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kEvery2Hours, "60"), {{T::DelayExceedsHour, F::Delay, true}}},
        {interval(kEvery2Hours, "120"), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kEvery2Hours, "99999"), {{T::DelayExceedsInterval, F::Delay, true}}},
        // The empty interval leaves no delay but a negative one; none selected is not checked.
        {interval(kNoInterval, ""), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kNoInterval, "-1"), {}}, {interval(-1, "1000"), {}},
        // Checked for a timed one, too, and before the times.
        {timed("1230", 0, "5"), {{T::DelayExceedsInterval, F::Delay, true}}},
        // A timed one has one time to check, an interval two.
        {timed("12:30"), {}},
        {timed("1230"), {{T::TimeColonMissing, F::Timed, false}}},
        {timed(":3"), {{T::TimeStartsWithColon, F::Timed, false}}},
        {timed("24:00"), {{T::TimeInvalid, F::Timed, false}}},
        {interval(0, "0", "", ""), {{T::TimeColonMissing, F::BetweenFirst, false}}},
        {interval(0, "0", "24:00", "x"), {{T::TimeInvalid, F::BetweenFirst, false}}},
        {interval(0, "0", "08:00", "17"), {{T::TimeColonMissing, F::BetweenSecond, false}}},
        // The period.
        {interval(0, "0", "10:00", "10:00"), {{T::PeriodEmpty, F::BetweenFirst, true}}},
        {interval(0, "0", "9:5", "09:50"), {{T::PeriodEmpty, F::BetweenFirst, true}}},
        {interval(0, "0", "22:00", "02:00"), {{T::PeriodOverMidnight, F::BetweenSecond, true}}},
        {interval(0, "0", "08:30", "08:29"), {{T::PeriodOverMidnight, F::BetweenSecond, true}}},
        {interval(0, "0", "8:5", "08:40"), {{T::PeriodOverMidnight, F::BetweenSecond, true}}},
        {interval(0, "0", "11:00", "12:"), {{T::PeriodOverMidnight, F::BetweenSecond, true}}},
        {interval(0, "0", "9:00", "10:00"), {}}, {interval(0, "0", "00:00", "23:59"), {}}};
    // clang-format on
    for (const auto& [typed, expected] : cases) {
        ScheduleEntry entry = typed;
        SCOPED_TRACE(entry.timed + ' ' + entry.between_first + '-' + entry.between_second + " +" +
                     entry.delay);
        const std::optional<ScheduleProblem> problem = checkSchedule(entry, kIntervals);
        ASSERT_EQ(problem.has_value(), expected.has_value());
        if (problem) {
            EXPECT_EQ(std::tuple(problem->text, problem->field, problem->beeps), *expected);
        }
    }
}

TEST(ScheduleRules, OnlyTheTimesThatWereCheckedAreCompleted) {
    const std::tuple<bool, const char*, const char*> cases[] = {{true, "9:1", "7:3 08:50 09:10"},
                                                                {false, "9:1", "07:30 8:5 9:1"},
                                                                {true, "930", "7:3 08:50 930"}};
    for (const auto& [is_interval, second, left] : cases) {
        ScheduleEntry entry = interval(kEvery15Min, "5", "8:5", second);
        entry.is_interval = is_interval;
        entry.timed = "7:3";
        checkSchedule(entry, kIntervals);
        EXPECT_EQ(entry.timed + ' ' + entry.between_first + ' ' + entry.between_second, left);
    }
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
    const ScheduleRecord before = record;
    for (const char* delay : {"32768", "-40000", "1e9"})
        EXPECT_EQ(errorOf([&] {
                      return storeSchedule({1, false, -1, "07:00", "", "", delay}, record), 0;
                  }),
                  error_number::Overflow);
    EXPECT_EQ(record, before);
}

TEST(ScheduleRules, ARecordIsShownUnlessItIsOnItsWay) {
    const auto shown = [](const ScheduleEntry& e) {
        return std::to_string(e.day) + (e.is_interval ? " interval " : " timed ") +
               std::to_string(e.interval) + '|' + e.timed + '|' + e.between_first + '|' +
               e.between_second + '|' + e.delay;
    };
    EXPECT_EQ(shown(entryOf(ScheduleRecord()).value()), "0 interval 0||||0");
    ScheduleRecord record;
    storeSchedule({8, false, 4, " 7:30", "9:30", "17:00", "12"}, record);
    record.identity = 1;
    record.timed = -1;                                                         // any number but 0
    EXPECT_EQ(shown(entryOf(record).value()), "8 timed 4|7:30|9:30|17:00|12"); // without blanks
    record.identity = kTrue;
    EXPECT_FALSE(entryOf(record));
    const ScheduleEntry defaults;
    EXPECT_EQ(defaults.timed + defaults.between_first + defaults.between_second, "00:0000:0023:59");
}

TEST(ScheduleRules, SchedulesThatDifferInTheDelayAloneAreTheSame) {
    ScheduleRecord stored;
    storeSchedule(interval(kEvery15Min, "5"), stored);
    ScheduleRecord record = stored;
    record.delay = 11;
    stored.identity = 1;
    stored.record_number = 7;
    const std::vector<ScheduleRecord> schedules{ScheduleRecord(), stored};
    EXPECT_TRUE(scheduleExists(record, schedules));
    EXPECT_FALSE(scheduleExists(record, {}));
    using R = ScheduleRecord;
    for (void (*const change)(R&) :
         {+[](R& r) { r.day = 4; }, +[](R& r) { r.timed = 1; },
          +[](R& r) { r.interval = kEvery2Hours; }, +[](R& r) { r.at_time = "00:00"; },
          +[](R& r) { r.between_first = "08:01"; }, +[](R& r) { r.between_second = "17:01"; }}) {
        ScheduleRecord other = record;
        change(other);
        EXPECT_FALSE(scheduleExists(other, schedules));
    }
    // A time that the service padded with NULs is the same time.
    stored.at_time = FixedText<5>();
    EXPECT_TRUE(scheduleExists(record, std::span(&stored, 1)));
}

TEST(ScheduleRules, IntervalsAreCutToSixCharacters) {
    const auto shown = [](Integer lang_base) {
        std::string line;
        for (const ScheduleInterval& each : scheduleIntervals(StringTable(lang_base)))
            line += each.text + '=' + std::to_string(each.minutes) + ' ';
        return line;
    };
    EXPECT_EQ(shown(kEnglish), "5 min=5 10 min=10 15 min=15 20 min=20 30 min=30 1 hour=60 "
                               "2 hour=120 3 hour=180 6 hour=360 12 hou=720 =0 ");
    EXPECT_EQ(shown(kSwedish), "5 min=5 10 min=10 15 min=15 20 min=20 30 min=30 1 tim=60 "
                               "2 tim=120 3 tim=180 6 tim=360 12 tim=720 =0 ");
}

} // namespace
} // namespace tollwick
