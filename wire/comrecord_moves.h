// The conversions between the shared record and its sub-records, by name. Those from a record give
// false when a text in it was cut.
#pragma once

#include "wire/record_packing.h"

namespace tollwick {

#define TOLLWICK_SENT(Name, Record)                                                                \
    inline void Move##Name##ToComrecord(const Record& from, Comrecord& to) {                       \
        packRecord(from, to);                                                                      \
    }
#define TOLLWICK_RECEIVED(Name, Record)                                                            \
    inline bool MoveComrecordTo##Name(const Comrecord& from, Record& to) {                         \
        return unpackRecord(from, to);                                                             \
    }

TOLLWICK_SENT(Schedulerecord, ScheduleRecord)
TOLLWICK_SENT(Hostrecord, HostRecord)
TOLLWICK_SENT(Settingsrecord, SettingsRecord)
TOLLWICK_SENT(Outboxrecord, OutboxRecord)
TOLLWICK_SENT(Loginrecord, LoginRecord)
TOLLWICK_SENT(Scriptrecord, ScriptRecord)
TOLLWICK_SENT(Uucpcommandrecord, UucpCommandRecord)

TOLLWICK_RECEIVED(Schedulerecord, ScheduleRecord)
TOLLWICK_RECEIVED(Hostrecord, HostRecord)
TOLLWICK_RECEIVED(Settingsrecord, SettingsRecord)
TOLLWICK_RECEIVED(Outboxrecord, OutboxRecord)
TOLLWICK_RECEIVED(Uucpstatusrecord, UucpStatusRecord)
TOLLWICK_RECEIVED(Scriptrecord, ScriptRecord)
TOLLWICK_RECEIVED(ScriptlistRecord, NameListRecord)
TOLLWICK_RECEIVED(TapiLocationrecord, NameListRecord)
TOLLWICK_RECEIVED(TapiDevicerecord, NameListRecord)
TOLLWICK_RECEIVED(RasEntryrecord, NameListRecord)

#undef TOLLWICK_SENT
#undef TOLLWICK_RECEIVED

} // namespace tollwick
