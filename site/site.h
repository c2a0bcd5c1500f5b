// Everything that a service serves, as plain records. The stand-in service works on one; a backup
// of a real service is one without outbox and login.
#pragma once

#include "site/credentials.h"
#include "wire/comrecord.h"
#include "wire/records.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace tollwick {

struct Site {
    std::optional<Credentials> login; // none in a backup

    SettingsRecord settings;
    // How a save of the settings is answered: 1 done, 2 refused (nothing is stored), 8 or 9 the two
    // further answers, for training.
    Integer settings_save_answer = result::Done;

    std::vector<ScheduleRecord> schedules;
    std::vector<HostRecord> hosts;
    // One per host, unless hosts share one.
    std::vector<VarText> spool_directories;
    std::vector<OutboxRecord> outbox;
    std::vector<ScriptRecord> scripts;

    std::vector<VarText> tapi_locations;
    std::vector<VarText> tapi_devices;
    std::vector<VarText> ras_entries;

    // Gives a number to every schedule and host that has none above 0 or shares it with one before
    // it.
    void assignRecordNumbers();

    // What is only the stand-in service's is left out of the file then, and only the owner may read
    // it.
    bool is_backup = false;

    // The host that is reached under this UUCP node name, without regard to case, or none.
    [[nodiscard]] const HostRecord* hostOfNode(const VarText& node) const;
};

// The first record whose number is at least `number`, whatever the order of the list.
template <class Record>
const Record* firstFrom(const std::vector<Record>& records, Long number) {
    const Record* first = nullptr;
    for (const Record& record : records) {
        if (record.record_number >= number &&
            (first == nullptr || record.record_number < first->record_number))
            first = &record;
    }
    return first;
}

template <class Record>
typename std::vector<Record>::iterator findNumber(std::vector<Record>& records, Long number) {
    return std::find_if(records.begin(), records.end(),
                        [number](const Record& r) { return r.record_number == number; });
}

// The next one above the highest number in use, or the lowest free one when there is none above.
template <class Record>
Long nextRecordNumber(std::vector<Record>& records) {
    Long highest = 0;
    for (const Record& record : records)
        highest = std::max(highest, record.record_number);
    // A console asks for the number after the last one, so the very highest is never given away.
    Long number = highest < std::numeric_limits<Long>::max() - 1 ? highest + 1 : 1;
    while (findNumber(records, number) != records.end())
        ++number;
    return number;
}

} // namespace tollwick
