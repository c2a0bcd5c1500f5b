// The days and intervals that a schedule can have.
#pragma once

#include "base/string_table.h"

#include <array>
#include <string>
#include <vector>

namespace tollwick {

// Ten names, Monday to Sunday and the three groups of days, in the order of the record's day field.
std::vector<std::string> scheduleDays(const StringTable& texts);

// How long the intervals are, in the order of the record's interval field.
inline constexpr std::array kIntervalMinutes = {5, 10, 15, 20, 30, 60, 120, 180, 360, 720};

struct ScheduleInterval {
    std::string text; // UTF-8, cut to 6 characters: wanted
    int minutes;
};

// The intervals and an eleventh one, which is empty and has 0 minutes: wanted.
std::vector<ScheduleInterval> scheduleIntervals(const StringTable& texts);

} // namespace tollwick
