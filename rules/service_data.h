// The console's copy of what the service holds, and the working records of its dialogs.
#pragma once

#include "wire/records.h"

#include <string>
#include <vector>

namespace tollwick {

// Blank records are all zeros and NULs and are never written.
inline const ScheduleRecord EmptyScheduleRecord{};
inline const HostRecord EmptyHostRecord{};

struct ServiceData {
    SettingsRecord settings;
    std::vector<ScheduleRecord> schedules;
    std::vector<HostRecord> hosts;
    std::vector<OutboxRecord> outbox;
    UucpStatusRecord uucp_status;

    ScheduleRecord current_schedule; // what the schedule editor works on
    HostRecord current_host;         // what the host dialog works on
    ScriptRecord script;
    UucpCommandRecord uucp_command;

    // The administrator's credentials of this session, UTF-8.
    std::string user_id;
    std::string password;

    // Empties what has been fetched, so that nothing of an earlier session is left when the
    // fetching of the next one stops halfway.
    void forgetService() {
        settings = SettingsRecord();
        schedules.clear();
        hosts.clear();
        outbox.clear();
        uucp_status = UucpStatusRecord();
    }
};

} // namespace tollwick
