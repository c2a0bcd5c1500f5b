// The rules of the schedule editor: what it shows, what it refuses and what it stores.
#pragma once

#include "rules/schedule_lists.h"
#include "wire/records.h"

#include <optional>
#include <span>
#include <string>

namespace tollwick {

// What the editor's controls hold. Texts are UTF-8.
struct ScheduleEntry {
    int day = 0;              // position in DayCombo; -1 when nothing is selected
    bool is_interval = false; // IntervalOption is selected
    int interval = 0;         // position in IntervalCombo; -1 when nothing is selected
    std::string timed = "00:00";
    std::string between_first = "00:00";
    std::string between_second = "23:59";
    std::string delay; // minutes
};

enum class ScheduleField { Day, Timed, BetweenFirst, BetweenSecond, Delay };

// Why an entry is refused: the text that says so, and the control that gets the focus.
struct ScheduleProblem {
    Text text;
    ScheduleField field;
    bool beeps = true;
};

// Whether the text is a time of day; otherwise `problem` says what is wrong with it. A part of one
// character is completed: a one-digit hour gets a "0" in front, one-digit minutes a "0" behind, so
// that 8:5 becomes 08:50. That is wanted.
bool ValidTime(std::string& text, Text& problem);

// Minutes from midnight to a valid time of day.
std::optional<int> minuteOfDay(std::string time);

// A record is shown unless it is one that has just been sent, with identity -1.
std::optional<ScheduleEntry> entryOf(const ScheduleRecord& record);

// The first problem of the entry. Times that pass are completed on the way.
std::optional<ScheduleProblem> checkSchedule(ScheduleEntry& entry,
                                             std::span<const ScheduleInterval> intervals);

// Stores every field of the entry, whichever option is selected. Throws RunTimeError 6 when the
// delay exceeds 16 bits.
void storeSchedule(const ScheduleEntry& entry, ScheduleRecord& record);

// True when any of the schedules equals the record in all but its delay.
bool scheduleExists(const ScheduleRecord& record, std::span<const ScheduleRecord> schedules);

} // namespace tollwick
