#include "link/requests.h"

#include "base/run_time_error.h"
#include "base/text.h"
#include "link/request_catalogue.h"
#include "link/request_scope.h"
#include "wire/comrecord_moves.h"

#include <utility>

namespace tollwick {

namespace {

// A failed save of a host is told in English in every language: wanted.
constexpr std::string_view kFailSaveHost =
    "Unable to transmit data to the Tollwick Service!\r\nThe connection is terminated!";

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

} // namespace

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
