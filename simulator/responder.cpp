#include "simulator/responder.h"

#include "wire/record_packing.h"

#include <QString>

namespace tollwick::simulator {
namespace {

// Verdicts of an authentication and of the deletion of a mail.
constexpr Long kAccepted = -1;
constexpr Long kRejected = 0;
constexpr Long kRemoved = 0;
constexpr Long kNotRemoved = 1;

// A stored schedule is neither blank (0) nor on its way as a new one (-1).
constexpr Integer kStoredIdentity = 1;
constexpr Integer kStoredHost = -1;

// Operation and class of a request as one number to switch over.
constexpr std::uint32_t kindOf(Integer operation, Integer object_class) {
    return static_cast<std::uint32_t>(static_cast<std::uint16_t>(operation)) << 16 |
           static_cast<std::uint16_t>(object_class);
}
constexpr std::uint32_t kindOf(Operation operation, ObjectClass object_class) {
    return kindOf(static_cast<Integer>(operation), static_cast<Integer>(object_class));
}

Comrecord answer(Integer result, Long number = 0) {
    Comrecord reply = EmptyComrecord;
    reply.Operation = result;
    reply.RecordNumber = number;
    return reply;
}

template <class Record>
Comrecord deliver(const Record& record, Long number = 0) {
    Comrecord reply = answer(result::Done, number);
    reply.RecordLength = static_cast<Integer>(std::min(packedSize(record), kDataBlockSize));
    packRecord(record, reply);
    return reply;
}

// A hand-written site may lack what tells the console that the record is stored.
Comrecord deliverStored(ScheduleRecord schedule) {
    if (schedule.identity == 0 || schedule.identity == kTrue)
        schedule.identity = kStoredIdentity;
    return deliver(schedule, schedule.record_number);
}
Comrecord deliverStored(HostRecord host) {
    if (host.state == 0)
        host.state = kStoredHost;
    return deliver(host, host.record_number);
}

template <class Record>
Record recordOf(const Comrecord& request) {
    Record record;
    unpackRecord(request, record);
    return record;
}

bool isSameName(const VarText& a, const VarText& b) {
    return QString::fromStdString(a.text()).compare(QString::fromStdString(b.text()),
                                                    Qt::CaseInsensitive) == 0;
}

// The record of the list with this number or the next above it.
template <class Record>
Comrecord getFrom(const std::vector<Record>& records, Long number) {
    const Record* record = firstFrom(records, number);
    return record != nullptr ? deliverStored(*record) : answer(result::EndOfList);
}

template <class Record>
bool removeNumber(std::vector<Record>& records, Long number) {
    const auto record = findNumber(records, number);
    if (record == records.end())
        return false;
    records.erase(record);
    return true;
}

} // namespace

Responder::Responder(Site& site, Transport& transport, std::function<void()> site_changed)
    : site_(site), transport_(transport), site_changed_(std::move(site_changed)) {}

Comrecord Responder::reply(const Comrecord& request, Session& session) {
    using enum Operation;
    const std::uint32_t kind = kindOf(request.Operation, request.ObjectClass);
    if (kind == kindOf(Authenticate, ObjectClass::Login))
        return authenticate(request, session);
    if (!session.is_authenticated)
        return answer(result::Refused);
    // Whatever time has brought about happened before this request.
    if (transport_.advance())
        site_changed_();

    const auto doneIf = [this](bool done) {
        if (done)
            site_changed_();
        return answer(done ? result::Done : result::Refused);
    };

    switch (kind) {
    case kindOf(Save, ObjectClass::Login):
        return saveLogin(request);

    case kindOf(Get, ObjectClass::Settings):
        return deliver(site_.settings);
    case kindOf(Save, ObjectClass::Settings):
        return saveSettings(request);

    case kindOf(Get, ObjectClass::Schedule):
        return getFrom(site_.schedules, request.RecordNumber);
    case kindOf(Add, ObjectClass::Schedule):
        return addSchedule(request);
    case kindOf(Save, ObjectClass::Schedule):
        return saveSchedule(request);
    case kindOf(Delete, ObjectClass::Schedule):
        return doneIf(removeNumber(site_.schedules, request.RecordNumber));

    case kindOf(Get, ObjectClass::Host):
        return getFrom(site_.hosts, request.RecordNumber);
    case kindOf(Add, ObjectClass::Host):
        return addHost(request);
    case kindOf(Save, ObjectClass::Host):
        return saveHost(request);
    case kindOf(Delete, ObjectClass::Host):
        return doneIf(removeNumber(site_.hosts, request.RecordNumber));
    case kindOf(Delete, ObjectClass::HostDirectory):
        return deleteHostDirectory(request);

    case kindOf(Delete, ObjectClass::OutboxMail):
        return deleteMail(request);
    case kindOf(Get, ObjectClass::UucpStatus):
        return deliver(transport_.status());
    case kindOf(Add, ObjectClass::UucpCommand):
        return carryOutCommand(request);

    case kindOf(Get, ObjectClass::Script):
        return getScript(request);
    case kindOf(Save, ObjectClass::Script):
        return saveScript(request);

    case kindOf(Get, ObjectClass::OutboxMail):
    case kindOf(Get, ObjectClass::TapiLocation):
    case kindOf(Get, ObjectClass::TapiDevice):
    case kindOf(Get, ObjectClass::RasEntry):
    case kindOf(Get, ObjectClass::ScriptFile):
        return getFirstOfList(ObjectClass{request.ObjectClass}, session);
    case kindOf(GetNext, ObjectClass::OutboxMail):
    case kindOf(GetNext, ObjectClass::TapiLocation):
    case kindOf(GetNext, ObjectClass::TapiDevice):
    case kindOf(GetNext, ObjectClass::RasEntry):
    case kindOf(GetNext, ObjectClass::ScriptFile):
        return getNextOfList(ObjectClass{request.ObjectClass}, session);

    default:
        return answer(result::Refused);
    }
}

Comrecord Responder::authenticate(const Comrecord& request, Session& session) {
    const auto login = recordOf<LoginRecord>(request);
    session.is_authenticated =
        site_.login && site_.login->accepts(QString::fromStdString(login.user_id.text()),
                                            QString::fromStdString(login.password.text()));
    return answer(result::Done, session.is_authenticated ? kAccepted : kRejected);
}

Comrecord Responder::saveLogin(const Comrecord& request) {
    const auto login = recordOf<LoginRecord>(request);
    site_.login = Credentials(QString::fromStdString(login.user_id.text()),
                              QString::fromStdString(login.password.text()));
    site_changed_();
    return answer(result::Done);
}

Comrecord Responder::saveSettings(const Comrecord& request) {
    if (site_.settings_save_answer != result::Refused) {
        unpackRecord(request, site_.settings);
        site_changed_();
    }
    return answer(site_.settings_save_answer);
}

Comrecord Responder::addSchedule(const Comrecord& request) {
    auto schedule = recordOf<ScheduleRecord>(request);
    schedule.identity = kStoredIdentity;
    schedule.record_number = nextRecordNumber(site_.schedules);
    site_.schedules.push_back(schedule);
    site_changed_();
    return deliverStored(schedule);
}

Comrecord Responder::saveSchedule(const Comrecord& request) {
    auto schedule = recordOf<ScheduleRecord>(request);
    const auto stored = findNumber(site_.schedules, schedule.record_number);
    if (stored == site_.schedules.end())
        return answer(result::Refused);
    schedule.identity = kStoredIdentity;
    *stored = schedule;
    site_changed_();
    return deliverStored(schedule);
}

Comrecord Responder::addHost(const Comrecord& request) {
    auto host = recordOf<HostRecord>(request);
    host.state = kStoredHost;
    host.record_number = nextRecordNumber(site_.hosts);
    site_.hosts.push_back(host);
    createSpoolDirectory(host);
    site_changed_();
    return deliverStored(host);
}

Comrecord Responder::saveHost(const Comrecord& request) {
    auto host = recordOf<HostRecord>(request);
    const auto stored = findNumber(site_.hosts, host.record_number);
    if (stored == site_.hosts.end())
        return answer(result::Refused);
    host.state = kStoredHost;
    *stored = host;
    createSpoolDirectory(host);
    site_changed_();
    return deliverStored(host);
}

void Responder::createSpoolDirectory(const HostRecord& host) {
    const VarText name(host.spool_directory.text());
    std::vector<VarText>& names = site_.spool_directories;
    if (!name.bytes().empty() && std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(name);
}

Comrecord Responder::deleteHostDirectory(const Comrecord& request) {
    std::string_view block(request.ComrecordData.data(), request.ComrecordData.size());
    VarText name;
    name.setBytes(std::string(withoutTrailingBlanks(block.substr(0, block.find('\0')))));
    // One that is gone already is as good as deleted.
    if (std::erase(site_.spool_directories, name) > 0)
        site_changed_();
    return answer(result::Done);
}

Comrecord Responder::deleteMail(const Comrecord& request) {
    const auto wanted = recordOf<OutboxRecord>(request);
    const auto mail = std::find_if(
        site_.outbox.begin(), site_.outbox.end(), [&wanted](const OutboxRecord& candidate) {
            return candidate.file_name.text() == wanted.file_name.text() &&
                   candidate.recipient.text() == wanted.recipient.text();
        });
    if (mail == site_.outbox.end())
        return answer(result::Done, kNotRemoved);
    site_.outbox.erase(mail);
    site_changed_();
    return answer(result::Done, kRemoved);
}

Comrecord Responder::carryOutCommand(const Comrecord& request) {
    const auto command = recordOf<UucpCommandRecord>(request);
    if (command.cancel_transport != kFalse)
        transport_.cancel();
    else if (command.transport_now != kFalse)
        transport_.start();
    else
        return answer(result::Refused);
    return answer(result::Done);
}

Comrecord Responder::getScript(const Comrecord& request) {
    auto script = recordOf<ScriptRecord>(request);
    script.text = ""; // an unknown name is that of a script yet to be written
    for (const ScriptRecord& stored : site_.scripts) {
        if (isSameName(stored.file_name, script.file_name))
            script = stored;
    }
    return deliver(script);
}

Comrecord Responder::saveScript(const Comrecord& request) {
    const auto script = recordOf<ScriptRecord>(request);
    if (script.file_name.text().empty())
        return answer(result::Refused);
    const auto stored =
        std::find_if(site_.scripts.begin(), site_.scripts.end(), [&script](const ScriptRecord& s) {
            return isSameName(s.file_name, script.file_name);
        });
    if (stored != site_.scripts.end())
        stored->text = script.text; // the file keeps its name
    else
        site_.scripts.push_back(script);
    site_changed_();
    return answer(result::Done);
}

Comrecord Responder::getFirstOfList(ObjectClass object_class, Session& session) {
    session.rest_of_lists[object_class] = wholeList(object_class);
    return getNextOfList(object_class, session);
}

Comrecord Responder::getNextOfList(ObjectClass object_class, Session& session) {
    std::deque<Comrecord>& rest = session.rest_of_lists[object_class];
    if (rest.empty())
        return answer(result::EndOfList);
    const Comrecord next = rest.front();
    rest.pop_front();
    return next;
}

std::deque<Comrecord> Responder::wholeList(ObjectClass object_class) const {
    std::deque<Comrecord> list;
    const auto appendNames = [&list](const std::vector<VarText>& names) {
        for (const VarText& name : names)
            list.push_back(deliver(NameListRecord{name}));
    };
    switch (object_class) {
    case ObjectClass::OutboxMail:
        for (const OutboxRecord& mail : site_.outbox)
            list.push_back(deliver(mail));
        break;
    case ObjectClass::TapiLocation:
        appendNames(site_.tapi_locations);
        break;
    case ObjectClass::TapiDevice:
        appendNames(site_.tapi_devices);
        break;
    case ObjectClass::RasEntry:
        appendNames(site_.ras_entries);
        break;
    case ObjectClass::ScriptFile:
        for (const ScriptRecord& script : site_.scripts)
            list.push_back(deliver(NameListRecord{script.file_name}));
        break;
    default:
        break;
    }
    return list;
}

} // namespace tollwick::simulator
