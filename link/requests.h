// Every operation that the console asks of the service, one function each.
//
// Unless said otherwise a request returns 0 when it is done and kTrue (-1) when it failed: refused,
// or no reply. It has then beeped, shown its message and closed the link, and the caller stops what
// it was doing. Other answers of the service are ignored.
#pragma once

#include "base/progress.h"
#include "base/prompter.h"
#include "base/string_table.h"
#include "link/service_link.h"
#include "rules/service_data.h"

#include <functional>
#include <string>
#include <vector>

namespace tollwick {

struct RequestRow;

// Whether a request that returns 0 or kTrue has failed.
constexpr bool hasFailed(Integer outcome) {
    return outcome == kTrue;
}

// What txAuthenticate returns when the link failed; any other number is the service's verdict.
inline constexpr Long kAuthenticateFailed = -2;
inline constexpr Long kAuthenticated = -1;

// What txGetUucpStatus reports.
inline constexpr int kStatusReceived = 0;
inline constexpr int kStatusFailed = -2;

class Requests {
public:
    Requests(ServiceLink& link, ServiceData& data, const StringTable& texts, Prompter& prompter,
             Progress& progress);

    // The verdict of the service on the user id and password: kAuthenticated, kAuthenticateFailed
    // after a failure, 0 for an answer without a verdict.
    Long txAuthenticate();
    Integer txNewLogin();

    Integer txGetSettings();
    // 0 for the results 1 and any other; 1 for 9; 2 for 8; -1 after a failure.
    Integer txSaveSettings();

    Integer txGetAllSchedules();
    // Sends the current schedule as a new one (its identity becomes -1) or as a changed one; the
    // reply's record becomes the current schedule.
    Integer txSaveSchedule(bool is_new);
    Integer txDeleteSchedule(Long record_number);

    Integer txGetAllHosts();
    // Sends the current host as a new one or as a changed one; the reply's record becomes the
    // current.
    Integer txSaveHost(bool is_new);
    // Any answer but 1 leaves the host where it is: see wasDone().
    Integer txDeleteHost(Long record_number);
    // `directory` is UTF-8; for a blank one nothing is sent.
    Integer txDeleteHostDirectory(const std::string& directory);

    Integer txGetAllOutbox();
    // False in `removed` when the service answered that it could not remove the mail, which the
    // user has been told; the link stays open then.
    Integer txDeleteOutboxMail(const OutboxRecord& mail, bool& removed);

    // Asks for the status without locking the windows. The status record is blank until the reply
    // comes. `done` is called once, with kStatusReceived, also after a silent time-out, or
    // kStatusFailed.
    void txGetUucpStatus(std::function<void(int)> done);
    // Result 1: the reply's record number as a 16-bit value. Any other result is returned itself,
    // after the failure rule.
    Integer txSendUucpCommand();

    // The names, UTF-8, are appended; those that came before a failure stay.
    Integer txGetAllTapiLocations(std::vector<std::string>& names);
    Integer txGetAllTapiDevices(std::vector<std::string>& names);
    Integer txGetAllRasEntries(std::vector<std::string>& names);
    Integer txGetAllScriptFile(std::vector<std::string>& names);

    // For a blank name nothing is sent. The reply's record is kept as the script.
    enum class Script { None, Whole, Cut };
    Integer txGetScript(const std::string& file_name, Script& received);
    // `text` is UTF-8 with CR LF between its lines. What does not fit the data block is cut: ask
    // scriptFits() before.
    Integer txSaveScript(const std::string& file_name, const std::string& text);

    // Settings, schedules, hosts and outbox after a login, each only if the one before succeeded.
    Integer RetrieveAll();

    // Whether the last request was answered with 1. Only then the next one that builds on it may
    // follow, whatever the request itself has returned.
    [[nodiscard]] bool wasDone() const { return last_result_ == result::Done; }
    // Whether the service has answered the last request at all, be it with a refusal; polls of the
    // status do not count.
    [[nodiscard]] bool wasAnswered() const { return was_answered_; }

    // True from the start of a request until its failure, if any, has been told.
    [[nodiscard]] bool isBusy() const { return isRunning() || link_.isWaiting(); }
    // The same, but not while the status is merely awaited: another request may then be made.
    [[nodiscard]] bool isRunning() const { return depth_ > 0; }

private:
    class Scope;
    class Waiting;

    // Says that nothing is going on any more.
    void showIdle();
    // Says what is done, waits until nothing else is on its way, clears the shared record and fills
    // its header.
    Comrecord& begin(const RequestRow& row);
    // Sends the shared record and waits for the reply.
    Integer exchange();
    Integer endOfList();
    Integer fail(const RequestRow& row);
    // Sends, waits, and applies the failure rule to the results 2 and -1.
    Integer exchangeOrFail(const RequestRow& row);

    template <class Record>
    Integer getNumberedList(const RequestRow& row, std::vector<Record>& list);
    template <class Take>
    Integer getList(const RequestRow& row, std::size_t most, Take&& take);
    using MoveName = bool (*)(const Comrecord& from, NameListRecord& to);
    Integer getNames(const RequestRow& row, MoveName move, std::vector<std::string>& names);

    ServiceLink& link_;
    ServiceData& data_;
    const StringTable& texts_;
    Prompter& prompter_;
    Progress& progress_;
    int depth_ = 0;
    bool in_step_ = true; // the next line that comes is the reply to the request begun last
    Integer last_result_ = result::NoReply;
    bool was_answered_ = false;
    bool is_status_shown_ = false;
    bool is_failure_told_ = false; // that of a poll, which the request begun last waited for
};

} // namespace tollwick
