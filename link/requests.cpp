#include "link/requests.h"

#include "base/run_time_error.h"
#include "base/text.h"
#include "link/request_catalogue.h"
#include "wire/comrecord_moves.h"

#include <limits>
#include <optional>
#include <utility>

namespace tollwick {

namespace {

// A failed save of a host is told in English in every language: wanted.
constexpr std::string_view kFailSaveHost =
    "Unable to transmit data to the Tollwick Service!\r\nThe connection is terminated!";

// A list that grows past these is taken for one without an end, and counts as a failed request.
constexpr std::size_t kMostNames = 10'000;
constexpr std::size_t kMostMails = 1'000'000;
constexpr std::size_t kMostSchedules = 10'000;
constexpr std::size_t kMostHosts = 100'000;

bool isFailure(Integer reply) {
    return reply == result::Refused || reply == result::NoReply;
}

// A blank record with the header of this request.
Comrecord headerOf(const RequestRow& row) {
    Comrecord record;
    record.Operation = static_cast<Integer>(row.operation);
    record.ObjectClass = static_cast<Integer>(row.object_class);
    record.RecordLength = row.record_length.value_or(Integer{0});
    return record;
}

// The number behind `number`; after the largest there is none, and the service says so itself.
Long nextNumber(Long number) {
    return number == std::numeric_limits<Long>::max() ? number : number + 1;
}

} // namespace

// Counts a request as running, its failure box included.
class Requests::Scope {
public:
    explicit Scope(Requests& requests) : depth_(requests.depth_) { ++depth_; }
    ~Scope() { --depth_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    int& depth_;
};

// The same for a request that is waited for: input is locked and the hourglass is up from its first
// moment to its last.
class Requests::Waiting {
public:
    explicit Waiting(Requests& requests)
        : requests_(requests), scope_(requests), busy_(requests.progress_),
          locked_(requests.link_.inputLock()) {}
    ~Waiting() {
        if (requests_.depth_ == 1 && std::exchange(requests_.is_status_shown_, false))
            requests_.showIdle();
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    Requests& requests_;
    Scope scope_;
    BusyPointer busy_;
    LockedInput locked_;
};

Requests::Requests(ServiceLink& link, ServiceData& data, const StringTable& texts,
                   Prompter& prompter, Progress& progress)
    : link_(link), data_(data), texts_(texts), prompter_(prompter), progress_(progress) {}

Comrecord& Requests::begin(const RequestRow& row) {
    if (row.status) {
        progress_.setInfo(texts_(*row.status));
        is_status_shown_ = true;
    }
    is_failure_told_ = false;
    link_.settle();
    in_step_ = !link_.isOwed() || link_.catchUp(headerOf(catalogue::GetUucpStatus));
    return link_.comrecord = headerOf(row);
}

Integer Requests::exchange() {
    last_result_ = result::NoReply;
    if (in_step_) {
        link_.SendComrecord(link_.comrecord);
        last_result_ = link_.WaitForReply();
    }
    // A reply can carry the number of a missing one.
    was_answered_ = last_result_ != result::NoReply || (link_.isOpen() && !link_.isOwed());
    return last_result_;
}

void Requests::showIdle() {
    try {
        progress_.setInfo(texts_(link_.isOpen() ? Text::Ready : Text::StatusConnectionClosed));
    } catch (const RunTimeError&) { // a language without texts, whose lack is told elsewhere
    }
}

Integer Requests::endOfList() {
    progress_.setCount({});
    return kFalse;
}

Integer Requests::fail(const RequestRow& row) {
    progress_.setCount({});
    if (!is_failure_told_) {
        prompter_.beep();
        prompter_.critical(row.failure ? texts_(*row.failure) : kFailSaveHost);
    }
    link_.Close();
    return kTrue;
}

Integer Requests::exchangeOrFail(const RequestRow& row) {
    const Integer reply = exchange();
    return isFailure(reply) ? fail(row) : reply;
}

template <class Record>
Integer Requests::getNumberedList(const RequestRow& row, std::vector<Record>& list) {
    constexpr bool is_schedule = std::is_same_v<Record, ScheduleRecord>;
    constexpr std::size_t most = is_schedule ? kMostSchedules : kMostHosts;
    const Waiting waiting(*this);
    list.clear();
    Comrecord& record = begin(row);
    record.RecordNumber = 1;
    std::optional<Long> last;
    while (list.size() <= most) {
        progress_.setCount(WorkCount{list.size(), {}});
        const Integer reply = exchange();
        if (reply == result::EndOfList)
            return endOfList();
        if (reply != result::Done)
            return fail(row);
        Record received;
        unpackRecord(record, received);
        // Schedules follow the number that the record itself carries, from a cleared record; hosts
        // the number in the reply's header, with the last host still in the data block. Wanted.
        Long number = record.RecordNumber;
        if constexpr (is_schedule) {
            number = received.record_number;
            record = EmptyComrecord;
        }
        // A service that has come back to a record which it sent before has no other.
        if (last && number <= *last)
            return endOfList();
        last = number;
        if (list.size() == most)
            break;
        list.push_back(std::move(received));
        record.Operation = static_cast<Integer>(row.operation);
        record.ObjectClass = static_cast<Integer>(row.object_class);
        record.RecordNumber = nextNumber(number);
    }
    return fail(row);
}

template <class Take>
Integer Requests::getList(const RequestRow& row, std::size_t most, Take&& take) {
    const Waiting waiting(*this);
    Comrecord& record = begin(row);
    for (std::size_t count = 0; count <= most;) {
        progress_.setCount(WorkCount{count, {}});
        const Integer reply = exchange();
        if (reply == result::EndOfList)
            return endOfList();
        if (reply != result::Done)
            return fail(row);
        if (count++ < most)
            take(record);
        record = EmptyComrecord;
        record.Operation = static_cast<Integer>(Operation::GetNext);
        record.ObjectClass = static_cast<Integer>(row.object_class);
    }
    return fail(row);
}

Integer Requests::getNames(const RequestRow& row, MoveName move, std::vector<std::string>& names) {
    return getList(row, kMostNames, [&](const Comrecord& record) {
        NameListRecord entry;
        move(record, entry);
        names.push_back(entry.name.text());
    });
}

Long Requests::txAuthenticate() {
    const Waiting waiting(*this);
    const RequestRow& row = catalogue::AuthenticateLogin;
    LoginRecord login;
    login.user_id = data_.user_id;
    login.password = data_.password;
    MoveLoginrecordToComrecord(login, begin(row));
    const Integer reply = exchange();
    if (isFailure(reply)) {
        fail(row);
        return kAuthenticateFailed;
    }
    const Long verdict = reply == result::Done ? link_.comrecord.RecordNumber : 0;
    return verdict == kAuthenticateFailed ? 0 : verdict; // which only the console itself gives
}

Integer Requests::txNewLogin() {
    const Waiting waiting(*this);
    LoginRecord login;
    login.user_id = data_.user_id;
    login.password = data_.password;
    MoveLoginrecordToComrecord(login, begin(catalogue::NewLogin));
    return exchangeOrFail(catalogue::NewLogin) == kTrue ? kTrue : kFalse;
}

Integer Requests::txGetSettings() {
    const Waiting waiting(*this);
    begin(catalogue::GetSettings);
    // Without its settings a later save would wipe those of the service.
    if (exchange() != result::Done)
        return fail(catalogue::GetSettings);
    SettingsRecord settings;
    if (!MoveComrecordToSettingsrecord(link_.comrecord, settings)) // cut
        return fail(catalogue::GetSettings);
    data_.settings = std::move(settings);
    return kFalse;
}

Integer Requests::txSaveSettings() {
    const Waiting waiting(*this);
    MoveSettingsrecordToComrecord(data_.settings, begin(catalogue::SaveSettings));
    switch (exchangeOrFail(catalogue::SaveSettings)) {
    case result::SettingsAnswer9:
        return 1;
    case result::SettingsAnswer8:
        return 2;
    case kTrue:
        return kTrue;
    default:
        return 0;
    }
}

Integer Requests::txGetAllSchedules() {
    return getNumberedList(catalogue::GetAllSchedules, data_.schedules);
}

Integer Requests::txSaveSchedule(bool is_new) {
    const Waiting waiting(*this);
    const RequestRow& row = is_new ? catalogue::AddSchedule : catalogue::SaveSchedule;
    if (is_new)
        data_.current_schedule.identity = kTrue;
    MoveSchedulerecordToComrecord(data_.current_schedule, begin(row));
    // Any answer but 1 is a failure here.
    if (exchange() != result::Done)
        return fail(row);
    // A reply that is too short for its record leaves what was sent.
    if (reachesField(link_.comrecord, &ScheduleRecord::record_number))
        MoveComrecordToSchedulerecord(link_.comrecord, data_.current_schedule);
    return kFalse;
}

Integer Requests::txDeleteSchedule(Long record_number) {
    const Waiting waiting(*this);
    const RequestRow& row = catalogue::DeleteSchedule;
    data_.current_schedule = EmptyScheduleRecord;
    data_.current_schedule.identity = 1;
    MoveSchedulerecordToComrecord(data_.current_schedule, begin(row));
    link_.comrecord.RecordNumber = record_number;
    return exchange() == result::Done ? kFalse : fail(row);
}

Integer Requests::txGetAllHosts() {
    return getNumberedList(catalogue::GetAllHosts, data_.hosts);
}

Integer Requests::txSaveHost(bool is_new) {
    const Waiting waiting(*this);
    const RequestRow& row = is_new ? catalogue::AddHost : catalogue::SaveHost;
    MoveHostrecordToComrecord(data_.current_host, begin(row));
    // Any answer but 1 is a failure here.
    if (exchange() != result::Done)
        return fail(row);
    if (reachesField(link_.comrecord, &HostRecord::display_name))
        MoveComrecordToHostrecord(link_.comrecord, data_.current_host);
    return kFalse;
}

Integer Requests::txDeleteHost(Long record_number) {
    const Waiting waiting(*this);
    MoveHostrecordToComrecord(EmptyHostRecord, begin(catalogue::DeleteHost));
    link_.comrecord.RecordNumber = record_number;
    return exchangeOrFail(catalogue::DeleteHost) == kTrue ? kTrue : kFalse;
}

Integer Requests::txDeleteHostDirectory(const std::string& directory) {
    if (isBlank(directory)) {
        last_result_ = result::Done;
        return kFalse;
    }
    const Waiting waiting(*this);
    Comrecord& record = begin(catalogue::DeleteHostDirectory);
    // Raw characters, without a length before them.
    const std::string bytes = toAnsi(trimmed(directory));
    bytes.copy(record.ComrecordData.data(), record.ComrecordData.size());
    return exchangeOrFail(catalogue::DeleteHostDirectory) == kTrue ? kTrue : kFalse;
}

Integer Requests::txGetAllOutbox() {
    // Windows go on showing the old mails until the new ones are there.
    std::vector<OutboxRecord> outbox;
    const Integer failed =
        getList(catalogue::GetAllOutbox, kMostMails, [&](const Comrecord& record) {
            MoveComrecordToOutboxrecord(record, outbox.emplace_back());
        });
    data_.outbox = std::move(outbox);
    return failed;
}

Integer Requests::txDeleteOutboxMail(const OutboxRecord& mail, bool& removed) {
    const Waiting waiting(*this);
    removed = false;
    MoveOutboxrecordToComrecord(mail, begin(catalogue::DeleteOutboxMail));
    const Integer reply = exchangeOrFail(catalogue::DeleteOutboxMail);
    removed = reply == result::Done && link_.comrecord.RecordNumber == 0;
    return reply == kTrue ? kTrue : kFalse;
}

void Requests::txGetUucpStatus(std::function<void(int)> done) {
    link_.settle();
    data_.uucp_status = UucpStatusRecord();
    const RequestRow& row = catalogue::GetUucpStatus;
    // The data block keeps its old bytes: wanted.
    Comrecord& record = link_.comrecord;
    const DataBlock block = record.ComrecordData;
    record = headerOf(row);
    record.ComrecordData = block;
    link_.SendComrecord(record);
    using enum ServiceLink::ReportEnd;
    link_.reportReply([this, done = std::move(done)](ServiceLink::ReportEnd end, Integer reply) {
        const Scope scope(*this);
        is_failure_told_ = false;
        if (end == Replied && reply == result::Done)
            MoveComrecordToUucpstatusrecord(link_.comrecord, data_.uucp_status);
        // Only what the service says is told: a time-out is silent, and a link that has closed is
        // seen by the next tick.
        const bool failed = end == Replied && isFailure(reply);
        if (failed) {
            fail(catalogue::GetUucpStatus);
            is_failure_told_ = true;
        }
        done(failed ? kStatusFailed : kStatusReceived);
    });
}

Integer Requests::txSendUucpCommand() {
    const Waiting waiting(*this);
    MoveUucpcommandrecordToComrecord(data_.uucp_command, begin(catalogue::SendUucpCommand));
    const Integer reply = exchange();
    if (reply == result::Done)
        return static_cast<Integer>(link_.comrecord.RecordNumber);
    fail(catalogue::SendUucpCommand);
    return reply;
}

Integer Requests::txGetAllTapiLocations(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllTapiLocations, MoveComrecordToTapiLocationrecord, names);
}

Integer Requests::txGetAllTapiDevices(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllTapiDevices, MoveComrecordToTapiDevicerecord, names);
}

Integer Requests::txGetAllRasEntries(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllRasEntries, MoveComrecordToRasEntryrecord, names);
}

Integer Requests::txGetAllScriptFile(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllScriptFile, MoveComrecordToScriptlistRecord, names);
}

Integer Requests::txGetScript(const std::string& file_name, Script& received) {
    received = Script::None;
    if (isBlank(file_name))
        return kFalse;
    const Waiting waiting(*this);
    const RequestRow& row = catalogue::GetScript;
    ScriptRecord wanted;
    wanted.file_name = file_name;
    MoveScriptrecordToComrecord(wanted, begin(row));
    if (exchange() != result::Done)
        return fail(row);
    received =
        MoveComrecordToScriptrecord(link_.comrecord, data_.script) ? Script::Whole : Script::Cut;
    return kFalse;
}

Integer Requests::txSaveScript(const std::string& file_name, const std::string& text) {
    if (isBlank(file_name))
        return kFalse;
    const Waiting waiting(*this);
    const RequestRow& row = catalogue::SaveScript;
    data_.script.file_name = file_name;
    data_.script.text = text;
    MoveScriptrecordToComrecord(data_.script, begin(row));
    return exchange() == result::Done ? kFalse : fail(row);
}

Integer Requests::RetrieveAll() {
    const Waiting waiting(*this);
    const bool failed = hasFailed(txGetSettings()) || hasFailed(txGetAllSchedules()) ||
                        hasFailed(txGetAllHosts()) || hasFailed(txGetAllOutbox());
    return failed ? kTrue : kFalse;
}

} // namespace tollwick
