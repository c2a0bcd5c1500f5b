// When the schedules start the next transport.
#pragma once

#include "base/clock.h"
#include "wire/records.h"

#include <optional>
#include <span>

namespace tollwick {

// A minute of the week.
struct WeekTime {
    int day = 0;    // 0 is Monday
    int minute = 0; // since midnight
    bool operator==(const WeekTime&) const = default;
};

WeekTime weekTime(const LocalTime& time);

// The first start after `now`, within a week; nothing when no schedule starts any. An interval
// begins at the first of its two times and does not start anything after the second; its delay
// shifts every start. Schedules with a day, an interval or a time that there is not start nothing.
std::optional<WeekTime> nextStart(std::span<const ScheduleRecord> schedules, const WeekTime& now);

} // namespace tollwick
