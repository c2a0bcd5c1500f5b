// What differs between two sites. Record numbers do not count, nor what only a stand-in service
// keeps; names of hosts and scripts are compared without regard to case.
#pragma once

#include "site/field_text.h"
#include "site/site.h"

#include <vector>

namespace tollwick {

struct Difference {
    QString kind;  // "setting", "schedule", "host" or "script"
    QString name;  // of the host or script; of a schedule its number in the first site that has it
    QString field; // empty where only one of the sites has it
    // As people read them; empty where a site has nothing, "differs" in both for a secret.
    QString first;
    QString second;
};

std::vector<Difference> differencesOf(const Site& first, const Site& second);

// Whether a field says what a site is, rather than where its service keeps it.
bool counts(std::string_view field);
// Equal in all fields that count; passwords are compared as they read, however they are scrambled.
bool isEqual(const HostRecord& first, const HostRecord& second);
bool isEqual(const ScheduleRecord& first, const ScheduleRecord& second);
bool isEqual(const SettingsRecord& first, const SettingsRecord& second);
bool isEqual(const ScriptRecord& first, const ScriptRecord& second);

// The record of the list with this name, or nullptr.
const HostRecord* findHost(const std::vector<HostRecord>& hosts, std::string_view display_name);
const ScriptRecord* findScript(const std::vector<ScriptRecord>& scripts,
                               std::string_view file_name);

// Schedules have no name: equal ones belong together, and of the rest those with the same number.
// For each of the first the position in the second, or -1.
std::vector<int> matchSchedules(const std::vector<ScheduleRecord>& first,
                                const std::vector<ScheduleRecord>& second);

} // namespace tollwick
