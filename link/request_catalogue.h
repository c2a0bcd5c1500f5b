// The catalogue of requests: what each sends in the header, and what is told while it runs and when
// it fails.
#pragma once

#include "base/string_table.h"
#include "wire/comrecord.h"
#include "wire/record_packing.h"

#include <optional>

namespace tollwick {

// One row of the catalogue.
struct RequestRow {
    Operation operation;
    ObjectClass object_class;
    std::optional<Integer> record_length; // of the sub-record; not written when absent
    std::optional<Text> failure;          // shown when the request failed; absent: kFailSaveHost
    std::optional<Text> status;           // shown while the request runs
};

namespace catalogue {
using enum Operation;
using C = ObjectClass;
using T = Text;
inline constexpr std::nullopt_t NotSet = std::nullopt;
inline constexpr std::nullopt_t None = std::nullopt;
inline constexpr auto kScheduleSize = static_cast<Integer>(wireSize<ScheduleRecord>());
inline constexpr auto kHostSize = static_cast<Integer>(wireSize<HostRecord>());
inline constexpr auto kCommandSize = static_cast<Integer>(wireSize<UucpCommandRecord>());

// clang-format off
inline constexpr RequestRow
    AuthenticateLogin  {Authenticate, C::Login,         8,      T::FailAuthenticate,        None},
    NewLogin           {Save,         C::Login,         8,      T::FailNewLogin,            T::StatusSaving},
    // The saving text for the retrieval, too: wanted.
    GetSettings        {Get,          C::Settings,      106,    T::FailSettings,            T::StatusRetrievingSettings},
    SaveSettings       {Save,         C::Settings,      106,    T::FailSettings,            T::StatusSaving},
    GetAllSchedules    {Get,          C::Schedule,      NotSet, T::FailGetSchedules,        T::StatusRetrievingSchedules},
    AddSchedule        {Add,          C::Schedule,      kScheduleSize,    T::FailSaveSchedule,        T::StatusSaving},
    SaveSchedule       {Save,         C::Schedule,      kScheduleSize,    T::FailSaveSchedule,        T::StatusSaving},
    DeleteSchedule     {Delete,       C::Schedule,      kScheduleSize,    T::FailDeleteSchedule,      T::StatusRemovingSchedule},
    GetAllHosts        {Get,          C::Host,          NotSet, T::FailGetHosts,            T::StatusRetrievingHosts},
    AddHost            {Add,          C::Host,          kHostSize,   None,                       None},
    SaveHost           {Save,         C::Host,          kHostSize,   None,                       None},
    DeleteHost         {Delete,       C::Host,          kHostSize,   T::FailDeleteHost,          T::StatusRemovingHost},
    DeleteHostDirectory{Delete,       C::HostDirectory, NotSet, T::FailDeleteHostDirectory, None},
    GetAllOutbox       {Get,          C::OutboxMail,    NotSet, T::FailGetOutbox,           T::StatusRetrievingOutbox},
    DeleteOutboxMail   {Delete,       C::OutboxMail,    20,     T::FailDeleteMail,          T::StatusRemovingMail},
    GetUucpStatus      {Get,          C::UucpStatus,    0,      T::FailGetStatus,           None},
    SendUucpCommand    {Add,          C::UucpCommand,   kCommandSize,   T::FailSendCommand,         T::StatusSendingCommand},
    GetAllTapiLocations{Get,          C::TapiLocation,  NotSet, T::FailTapiLocations,       T::StatusRetrievingTapiLocations},
    GetAllTapiDevices  {Get,          C::TapiDevice,    NotSet, T::FailTapiDevices,         T::StatusRetrievingTapiDevices},
    GetAllRasEntries   {Get,          C::RasEntry,      NotSet, T::FailRasEntries,          T::StatusRetrievingRas},
    GetScript          {Get,          C::Script,        NotSet, T::FailGetScript,           None},
    SaveScript         {Save,         C::Script,        NotSet, T::FailSaveScript,          None},
    GetAllScriptFile   {Get,          C::ScriptFile,    NotSet, T::FailGetScriptFiles,      T::StatusRetrievingScriptFiles};
// clang-format on
} // namespace catalogue

} // namespace tollwick
