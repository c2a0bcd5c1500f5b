#include "rules/next_start.h"

#include "rules/schedule_lists.h"
#include "rules/schedule_rules.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace tollwick {
namespace {

constexpr int kDays = 7;
constexpr int kSaturday = 5;
// Behind the seven days, as the day of a schedule.
constexpr Integer kWeekdays = 7;
constexpr Integer kWeekends = 8;
constexpr Integer kEveryDay = 9;

bool appliesTo(const ScheduleRecord& schedule, int day) {
    switch (schedule.day) {
    case kWeekdays:
        return day < kSaturday;
    case kWeekends:
        return day >= kSaturday;
    case kEveryDay:
        return true;
    default:
        return schedule.day == day;
    }
}

// The schedule's first start on one of its days at this minute or later.
std::optional<int> startFrom(const ScheduleRecord& schedule, int earliest) {
    if (schedule.timed != 0) {
        const std::optional<int> start = minuteOfDay(schedule.at_time.text());
        return start && *start >= earliest ? start : std::nullopt;
    }
    const std::optional<int> first = minuteOfDay(schedule.between_first.text());
    const std::optional<int> last = minuteOfDay(schedule.between_second.text());
    const auto position = static_cast<std::size_t>(schedule.interval);
    if (!first || !last || schedule.interval < 0 || position >= kIntervalMinutes.size())
        return {};
    for (int start = *first + schedule.delay; start <= *last; start += kIntervalMinutes[position])
        if (start >= earliest)
            return start;
    return {};
}

} // namespace

WeekTime weekTime(const LocalTime& time) {
    using namespace std::chrono;
    const weekday day(sys_days(year(time.year) / time.month / time.day));
    return {static_cast<int>(day.iso_encoding()) - 1, time.hour * 60 + time.minute};
}

std::optional<WeekTime> nextStart(std::span<const ScheduleRecord> schedules, const WeekTime& now) {
    // Up to the same day of the next week, whose earlier minutes are still to come.
    for (int ahead = 0; ahead <= kDays; ++ahead) {
        const int day = (now.day + ahead) % kDays;
        std::optional<int> next;
        for (const ScheduleRecord& schedule : schedules) {
            if (!appliesTo(schedule, day))
                continue;
            const std::optional<int> start = startFrom(schedule, ahead == 0 ? now.minute + 1 : 0);
            if (start && (!next || *start < *next))
                next = start;
        }
        if (next)
            return WeekTime{day, *next};
    }
    return {};
}

} // namespace tollwick
