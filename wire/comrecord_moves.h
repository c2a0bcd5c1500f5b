// The conversions between the shared record and its sub-records, by name.
#pragma once

#include "wire/record_packing.h"

namespace tollwick {

#define TOLLWICK_MOVES(Name, Record)                                                               \
    inline void Move##Name##ToComrecord(const Record& from, Comrecord& to) {                       \
        packRecord(from, to);                                                                      \
    }                                                                                              \
    inline void MoveComrecordTo##Name(const Comrecord& from, Record& to) {                         \
        unpackRecord(from, to);                                                                    \
    }

TOLLWICK_MOVES(Schedulerecord, ScheduleRecord)
TOLLWICK_MOVES(Hostrecord, HostRecord)
TOLLWICK_MOVES(Settingsrecord, SettingsRecord)
TOLLWICK_MOVES(Outboxrecord, OutboxRecord)
TOLLWICK_MOVES(Uucpstatusrecord, UucpStatusRecord)
TOLLWICK_MOVES(Loginrecord, LoginRecord)
TOLLWICK_MOVES(Scriptrecord, ScriptRecord)
TOLLWICK_MOVES(ScriptlistRecord, NameListRecord)
TOLLWICK_MOVES(TapiLocationrecord, NameListRecord)
TOLLWICK_MOVES(TapiDevicerecord, NameListRecord)
TOLLWICK_MOVES(RasEntryrecord, NameListRecord)
TOLLWICK_MOVES(Uucpcommandrecord, UucpCommandRecord)

#undef TOLLWICK_MOVES

} // namespace tollwick
