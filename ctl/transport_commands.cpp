// The monitor, and transports.
#include "ctl/records.h"
#include "ctl/session.h"
#include "rules/list_contents.h"
#include "rules/node_keys.h"
#include "rules/transport_watch.h"

#include <QElapsedTimer>

namespace tollwick::ctl {
namespace {

constexpr int kPollEvery = 1000; // milliseconds

// Fetches the status. A service that is silent until the time-out counts as lost.
ExitStatus fetchStatus(Session& session) {
    bool is_over = false;
    int outcome = kStatusFailed;
    ServiceContext& service = session.context;
    service.requests.txGetUucpStatus([&](int reported) {
        outcome = reported;
        is_over = true;
    });
    service.link.runUntil([&] { return is_over; });
    if (outcome == kStatusFailed)
        return ExitStatus::ServiceRefused;
    if (service.link.isOpen() && service.data.uucp_status != UucpStatusRecord())
        return ExitStatus::Done;
    session.messages.error(Text::CtlConnectionLost);
    return ExitStatus::NoConnection;
}

void showStatusLine(Session& session) {
    const UucpStatusRecord& status = session.context.data.uucp_status;
    if (session.output.isJson())
        return session.output.documentLine("status", recordJson(status));
    const std::array<std::string, kMonitorRows> texts = monitorTexts(status);
    session.output.table({}, {Row(texts.begin(), texts.end())});
    session.output.flush();
}

void showMonitor(Session& session) {
    const ServiceData& data = session.context.data;
    if (session.output.isJson())
        return session.output.document("status", recordJson(data.uucp_status));
    const ListContents contents = listContents(node::UucpMonitor, data, session.texts);
    std::vector<Row> rows;
    for (std::size_t row = 0; row < contents.row_count; ++row)
        rows.push_back(contents.row(row).cells);
    session.output.table({}, rows);
}

// Takes a status every second until `is_over` says so of one.
template <class IsOver>
ExitStatus watch(Session& session, IsOver is_over) {
    for (;;) {
        QElapsedTimer timer;
        timer.start();
        if (const auto status = fetchStatus(session); status != ExitStatus::Done)
            return status;
        if (is_over(session.context.data.uucp_status))
            return ExitStatus::Done;
        session.context.link.runUntil([&] { return timer.hasExpired(kPollEvery); });
    }
}

ExitStatus sendCommand(Session& session, Integer UucpCommandRecord::*flag) {
    session.context.data.uucp_command = UucpCommandRecord();
    session.context.data.uucp_command.*flag = kTrue;
    session.requests.txSendUucpCommand();
    return session.requests.wasDone() ? ExitStatus::Done : session.failure();
}

// Tells when a transport has ended that need not move a single file: by what the service said
// before it was started.
class StartedTransport {
public:
    explicit StartedTransport(const UucpStatusRecord& before) : before_(before) {
        watch_.hasEnded(before);
    }
    bool hasEnded(const UucpStatusRecord& status) {
        if (watch_.hasEnded(status))
            return true;
        // The counts change for other reasons, too.
        if (status.state != before_.state || status.file_number != before_.file_number) {
            has_begun_ = true;
            return false;
        }
        return has_begun_ || ++unmoved_ >= TransportWatch::kQuietStatuses;
    }

private:
    const UucpStatusRecord before_;
    TransportWatch watch_;
    bool has_begun_ = false;
    int unmoved_ = 0;
};

} // namespace

ExitStatus showStatus(Session& session, const Arguments& arguments) {
    if (const auto status = session.logIn(); status != ExitStatus::Done)
        return status;
    if (arguments.has("watch")) {
        TransportWatch transport;
        return watch(session, [&](const UucpStatusRecord& status) {
            showStatusLine(session);
            return transport.hasEnded(status);
        });
    }
    const ExitStatus status = fetchStatus(session);
    if (status == ExitStatus::Done)
        showMonitor(session);
    return status;
}

ExitStatus startTransport(Session& session, const Arguments& arguments) {
    if (const auto status = session.logIn(); status != ExitStatus::Done)
        return status;
    if (!arguments.has("wait"))
        return sendCommand(session, &UucpCommandRecord::transport_now);
    if (const auto status = fetchStatus(session); status != ExitStatus::Done)
        return status;
    StartedTransport transport(session.context.data.uucp_status);
    if (const auto status = sendCommand(session, &UucpCommandRecord::transport_now);
        status != ExitStatus::Done)
        return status;
    return watch(session,
                 [&](const UucpStatusRecord& status) { return transport.hasEnded(status); });
}

ExitStatus cancelTransport(Session& session, const Arguments&) {
    if (const auto status = session.logIn(); status != ExitStatus::Done)
        return status;
    return sendCommand(session, &UucpCommandRecord::cancel_transport);
}

} // namespace tollwick::ctl
