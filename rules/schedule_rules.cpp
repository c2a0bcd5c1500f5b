#include "rules/schedule_rules.h"

#include "base/numeric.h"
#include "base/text.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr int kLongestDelay = 59; // minutes

// "08:30" as 830: the two characters of the hour followed by what stands behind the colon.
double comparableTime(std::string_view time) {
    const std::string_view minutes = time.substr(time.find(':') + 1);
    return numericValue(std::string(time.substr(0, 2)).append(minutes));
}

bool fitsRecord(std::string_view time) {
    return withoutTrailingBlanks(time).size() <= decltype(ScheduleRecord::at_time)::width;
}

} // namespace

bool ValidTime(std::string& text, Text& problem) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos || colon == 0) {
        problem = colon == 0 ? Text::TimeStartsWithColon : Text::TimeColonMissing;
        return false;
    }
    const std::string hour = text.substr(0, colon);
    const std::string minutes = text.substr(colon + 1);
    const auto isWithin = [](const std::string& number, int last) {
        const double value = numericValue(number);
        return value >= 0 && value <= last;
    };
    if (!isWithin(hour, 23) || !isWithin(minutes, 59)) {
        problem = Text::TimeInvalid;
        return false;
    }
    if (hour.size() == 1)
        text.insert(0, 1, '0');
    if (minutes.size() == 1)
        text.push_back('0'); // behind, not in front: wanted
    return true;
}

std::optional<int> minuteOfDay(std::string time) {
    Text problem{};
    if (!ValidTime(time, problem))
        return {};
    const std::size_t colon = time.find(':');
    return static_cast<int>(numericValue(time.substr(0, colon))) * 60 +
           static_cast<int>(numericValue(time.substr(colon + 1)));
}

std::optional<ScheduleEntry> entryOf(const ScheduleRecord& record) {
    if (record.identity == kTrue)
        return {};
    ScheduleEntry entry;
    entry.day = record.day;
    entry.is_interval = record.timed == 0;
    entry.interval = record.interval;
    entry.timed = trimmed(record.at_time.text());
    entry.between_first = trimmed(record.between_first.text());
    entry.between_second = trimmed(record.between_second.text());
    entry.delay = std::to_string(record.delay);
    return entry;
}

std::optional<ScheduleProblem> checkSchedule(ScheduleEntry& entry,
                                             std::span<const ScheduleInterval> intervals) {
    // The delay is checked whichever option is selected: wanted.
    const auto interval = static_cast<std::size_t>(entry.interval);
    if (entry.interval >= 0 && interval < intervals.size()) {
        const double delay = numericValue(entry.delay);
        if (delay > intervals[interval].minutes - 1)
            return ScheduleProblem{Text::DelayExceedsInterval, ScheduleField::Delay};
        if (delay > kLongestDelay)
            return ScheduleProblem{Text::DelayExceedsHour, ScheduleField::Delay};
    }
    const auto checkTime = [](std::string& time,
                              ScheduleField field) -> std::optional<ScheduleProblem> {
        Text problem = Text::TimeInvalid; // of a valid time, too, that the record would cut
        if (ValidTime(time, problem) && fitsRecord(time))
            return {};
        return ScheduleProblem{problem, field, false};
    };
    if (!entry.is_interval)
        return checkTime(entry.timed, ScheduleField::Timed);
    if (const auto problem = checkTime(entry.between_first, ScheduleField::BetweenFirst))
        return problem;
    if (const auto problem = checkTime(entry.between_second, ScheduleField::BetweenSecond))
        return problem;
    if (entry.between_first == entry.between_second)
        return ScheduleProblem{Text::PeriodEmpty, ScheduleField::BetweenFirst};
    if (comparableTime(entry.between_second) < comparableTime(entry.between_first))
        return ScheduleProblem{Text::PeriodOverMidnight, ScheduleField::BetweenSecond};
    return {};
}

void storeSchedule(const ScheduleEntry& entry, ScheduleRecord& record) {
    const Integer delay = toInteger(numericValue(entry.delay));
    record.day = static_cast<Integer>(entry.day);
    record.timed = entry.is_interval ? 0 : 1;
    record.interval = static_cast<Integer>(entry.interval);
    record.at_time = entry.timed;
    record.between_first = entry.between_first;
    record.between_second = entry.between_second;
    record.delay = delay;
}

bool scheduleExists(const ScheduleRecord& record, std::span<const ScheduleRecord> schedules) {
    return std::any_of(schedules.begin(), schedules.end(), [&](const ScheduleRecord& other) {
        // By their texts: the service may pad a time with NULs where the console pads with blanks.
        return other.timed == record.timed && other.interval == record.interval &&
               other.day == record.day && other.at_time.text() == record.at_time.text() &&
               other.between_first.text() == record.between_first.text() &&
               other.between_second.text() == record.between_second.text();
    });
}

} // namespace tollwick
