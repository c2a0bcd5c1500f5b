// What the dialogs of schedules and settings refuse and store, and which commands a node offers.
#include "rules/command_rules.h"
#include "rules/schedule_rules.h"
#include "rules/setting_rules.h"
#include "tests/support/error_of.h"
#include "tests/support/recording_prompter.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

const std::vector<ScheduleInterval> kIntervals = scheduleIntervals(StringTable(kEnglish));
constexpr int kEvery15Min = 2, kEvery1Hour = 5, kEvery2Hours = 6, kNoInterval = 10;

TEST(ScheduleRules, TimesAreCheckedAndCompleted) {
    // clang-format off
    const std::pair<const char*, const char*> good[] = {
        {"7:3", "07:30"}, // the "0" stands behind
        {"0:0", "00:00"}, {"23:59", "23:59"},
        {"12:", "12:"},   // empty minutes are 0 and have no character to complete
        {"x:y", "0x:y0"}, // no numbers count as 0
        {" 7:30", " 7:30"}, {"12:30:45", "12:30:45"}, {"22.5:00", "22.5:00"}};
    const std::pair<const char*, Text> bad[] = {
        {"1230", Text::TimeColonMissing}, {":30", Text::TimeStartsWithColon},
        {"23.5:00", Text::TimeInvalid}, {"-1:00", Text::TimeInvalid}, {"9:60", Text::TimeInvalid},
        {"9:-1", Text::TimeInvalid}};
    // clang-format on
    Text found{};
    for (const auto& [typed, completed] : good) {
        std::string text = typed;
        EXPECT_TRUE(ValidTime(text, found)) << typed;
        EXPECT_EQ(text, completed);
    }
    for (const auto& [typed, problem] : bad) {
        std::string text = typed;
        EXPECT_FALSE(ValidTime(text, found)) << typed;
        EXPECT_EQ(found, problem) << typed;
        EXPECT_EQ(text, typed); // untouched
    }
}

ScheduleEntry interval(int position, const char* delay, const char* first = "08:00",
                       const char* second = "17:00") {
    return {3, true, position, "7:3", first, second, delay};
}
ScheduleEntry timed(const char* at, const char* delay = "0") {
    return {3, false, 0, at, "8:5", "9:1", delay};
}

TEST(ScheduleRules, TheFirstProblemOfAnEntryIsFound) {
    using F = ScheduleField;
    using T = Text;
    // clang-format off
    const std::pair<ScheduleEntry, std::optional<std::tuple<T, F, bool>>> cases[] = {
        // The delay against its interval, then against the hour; whether it beeps.
        {interval(kEvery15Min, "14"), {}}, {interval(kEvery15Min, "-1"), {}},
        {interval(kEvery2Hours, "59"), {}},
        {interval(kEvery15Min, "14.5"), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kEvery1Hour, "60"), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kEvery2Hours, "60"), {{T::DelayExceedsHour, F::Delay, true}}},
        {interval(kEvery2Hours, "120"), {{T::DelayExceedsInterval, F::Delay, true}}},
        // The empty interval leaves no delay but a negative one; none selected is not checked.
        {interval(kNoInterval, ""), {{T::DelayExceedsInterval, F::Delay, true}}},
        {interval(kNoInterval, "-1"), {}}, {interval(-1, "1000"), {}},
        // Checked for a timed one, too, and before its one time.
        {timed("1230", "5"), {{T::DelayExceedsInterval, F::Delay, true}}},
        {timed("1230"), {{T::TimeColonMissing, F::Timed, false}}}, {timed("12:30"), {}},
        // What the record would cut.
        {timed("8:005"), {{T::TimeInvalid, F::Timed, false}}}, {timed("08:30 "), {}},
        {interval(0, "0", "24:00", "x"), {{T::TimeInvalid, F::BetweenFirst, false}}},
        {interval(0, "0", "08:00", "17"), {{T::TimeColonMissing, F::BetweenSecond, false}}},
        // The period, from the times as they are completed.
        {interval(0, "0", "9:5", "09:50"), {{T::PeriodEmpty, F::BetweenFirst, true}}},
        {interval(0, "0", "08:30", "08:29"), {{T::PeriodOverMidnight, F::BetweenSecond, true}}},
        {interval(0, "0", "8:5", "08:40"), {{T::PeriodOverMidnight, F::BetweenSecond, true}}},
        {interval(0, "0", "11:00", "12:"), {{T::PeriodOverMidnight, F::BetweenSecond, true}}},
        {interval(0, "0", "9:00", "10:00"), {}}};
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
        // Only the times of the option that is selected are completed.
        EXPECT_EQ(entry.is_interval ? entry.timed : entry.between_second,
                  entry.is_interval ? "7:3" : "9:1");
    }
}

TEST(ScheduleRules, EveryFieldIsStoredWhicheverOptionIsSelected) {
    ScheduleRecord record;
    record.identity = 1;
    record.unnamed_8 = 77;
    record.record_number = 1234;
    ScheduleRecord expected = record;
    expected.day = 9;
    expected.interval = 7;
    expected.at_time = " 7";
    expected.between_first = "08:00"; // cut
    expected.between_second = "17:00";
    expected.delay = 2; // to the even neighbour
    for (const bool is_interval : {true, false}) {
        storeSchedule({9, is_interval, 7, " 7", "08:00:30", "17:00", "2.5"}, record);
        expected.timed = is_interval ? 0 : 1;
        EXPECT_EQ(record, expected);
    }
    for (const char* delay : {"32768", "-40000"}) {
        const ScheduleEntry entry = timed("07:00", delay);
        EXPECT_EQ(errorOf([&] { return storeSchedule(entry, record), 0; }), error_number::Overflow);
    }
    EXPECT_EQ(record, expected);

    record.timed = -1; // any number but 0
    EXPECT_FALSE(entryOf(record).value().is_interval);
    record.identity = kTrue; // on its way
    EXPECT_FALSE(entryOf(record));
}

TEST(ScheduleRules, SchedulesThatDifferInTheDelayAloneAreTheSame) {
    ScheduleRecord stored;
    storeSchedule(interval(kEvery15Min, "5"), stored);
    stored.at_time = "";
    ScheduleRecord record = stored;
    record.delay = 11;
    record.at_time = FixedText<5>(); // padded with NULs, as the service may
    stored.record_number = 7;
    const std::vector<ScheduleRecord> schedules{ScheduleRecord(), stored};
    EXPECT_TRUE(scheduleExists(record, schedules));
    using R = ScheduleRecord;
    for (void (*const change)(R&) :
         {+[](R& r) { r.day = 4; }, +[](R& r) { r.timed = 1; },
          +[](R& r) { r.interval = kEvery2Hours; }, +[](R& r) { r.at_time = "00:00"; },
          +[](R& r) { r.between_first = "08:01"; }, +[](R& r) { r.between_second = "17:01"; }}) {
        ScheduleRecord other = record;
        change(other);
        EXPECT_FALSE(scheduleExists(other, schedules));
    }
}

TEST(ScheduleRules, IntervalsAreCutToSixCharacters) {
    std::string line;
    for (const ScheduleInterval& each : scheduleIntervals(StringTable(kSwedish)))
        line += each.text + '=' + std::to_string(each.minutes) + ' ';
    EXPECT_EQ(line, "5 min=5 10 min=10 15 min=15 20 min=20 30 min=30 1 tim=60 "
                    "2 tim=120 3 tim=180 6 tim=360 12 tim=720 =0 ");
    EXPECT_EQ(kIntervals[9].text, "12 hou");
}

TEST(SettingRules, AnIpNumberHasFourPartsAndTheThirdIsNotExamined) {
    RecordingPrompter prompter;
    for (const char* text :
         {"0.0.0.0", "255.255.255.255", "10.0.0.1x", "a.b.c.d", " 1.2.3. 4 ", "...",
          // The third part: neither its range nor 16 bits matter.
          "1.2.300.4", "1.2.99999.4",
          // The second part is read with the length of the third: 99, none, 25, 2.30, -.
          "10.999.30.4", "10.256..4", "10.256.30.4", "10.2.3000.4", "10.-1.3.4"})
        EXPECT_FALSE(InvalidIpNumber(text, prompter)) << text;
    for (const char* text :
         {"", "1.2.3", "1.2.3.4.5", "256.1.1.1", "-1.1.1.1", "1.1.1.256", "1.1.1.-1",
          "10.256.300.4", "10.-1.30.4", "10.255.60000.4", // "255.6" rounds to 256
          // Too large for a byte, but not for 16 bits; and a wrong number of dots is seen first.
          "32767.1.1.1", "99999.1.1"}) {
        prompter.expectBeep();
        EXPECT_TRUE(InvalidIpNumber(text, prompter)) << text;
        EXPECT_TRUE(prompter.done()) << text;
    }
    for (const char* text : {"32768.1.1.1", "1.40000.11111.1", "300.1.1.-32769"})
        EXPECT_EQ(errorOf([&] { return InvalidIpNumber(text, prompter); }), error_number::Overflow);
}

TEST(SettingRules, PortsGoFrom1To32766) {
    const std::pair<std::string_view, std::optional<Long>> cases[] = {
        {"1", 1},         {" 80abc", 80},  {"0.4", 0}, {"2.5", 2},   {"32765.5", 32766},
        {"32766", 32766}, {"32766.1", {}}, {"", {}},   {"-0.4", {}}, {"1e999", {}}};
    for (const auto& [text, port] : cases)
        EXPECT_EQ(portNumber(text), port) << '"' << text << '"';
}

TEST(SettingRules, CommandsHoldNoPathAndNoWildcard) {
    EXPECT_FALSE(ContainsAnyChar("kör.bat -a \"b c\" 'd' %1 & e", kCommandCharacters));
    for (const char* command : {"c:run", "\\run", "a/b", "a*", "?", "run <in", "run >out", "x|y"})
        EXPECT_TRUE(ContainsAnyChar(command, kCommandCharacters)) << command;
}

// The items that are enabled, as the Tools menu and the toolbar have them.
std::string enabled(const Selection& selection) {
    static constexpr const char* kNames[] = {"add",   "delete",  "properties", "toggle",
                                             "open",  "refresh", "cancel",     "+schedule",
                                             "+host", "x",       "p"};
    std::string names;
    const EnableFlags flags = enableFlags(selection);
    for (std::size_t i = 0; i < flags.size(); ++i)
        if (flags[i] == kOn)
            names += std::string(names.empty() ? "" : " ") + kNames[i];
    return names;
}

TEST(CommandRules, EveryNodeHasItsItems) {
    // Without a row that is selected, with one, with several.
    // clang-format off
    const struct {
        std::string_view node, none, one, several;
    } cases[] = {
        {"loginaccount", "properties p", "properties p", "properties p"},
        {"schedule", "add +schedule", "add delete properties +schedule x p", "add delete +schedule x"},
        {"uucphosts", "add +host", "add delete properties +host x p", "add delete +host x"},
        {"admin", "", "properties p", ""}, {"smtpserver", "", "properties p", ""}, {"smtpforward", "", "properties p", ""},
        {"logs", "", "properties toggle p", ""}, {"options", "", "properties toggle p", ""},
        {"uucpdaemon", "", "properties toggle p", ""},
        {"outbox", "refresh", "delete refresh x", "delete refresh x"}, {"uucpmonitor", "cancel", "cancel", "cancel"},
        {"servername", "refresh", "properties refresh p", "refresh"}, {"configuration", "", "properties p", ""},
        {"system", "", "properties p", ""}, {"view", "", "properties p", ""}, {"", "", "", ""},
        {"Schedule", "", "", ""}}; // keys go by case
    // clang-format on
    for (const auto& c : cases) {
        EXPECT_EQ(enabled({true, c.node, 0}), c.none) << c.node;
        EXPECT_EQ(enabled({true, c.node, 1}), c.one) << c.node;
        EXPECT_EQ(enabled({true, c.node, 2}), c.several) << c.node;
        EXPECT_EQ(enabled({false, c.node, 1}), "") << c.node;
    }
}

} // namespace
} // namespace tollwick
