// The days and intervals that a schedule can have.
#pragma once

#include "base/string_table.h"

#include <string>
#include <vector>

namespace tollwick {

// Ten names, Monday to Sunday and the three groups of days, in the order of the record's day field.
std::vector<std::string> scheduleDays(const StringTable& texts);

struct ScheduleInterval {
    std::string text; // UTF-8, cut to 6 characters: wanted
    int minutes;
};

// Eleven intervals in the order of the record's interval field; the last is empty, with 0 minutes.
std::vector<ScheduleInterval> scheduleIntervals(const StringTable& texts);

} // namespace tollwick
