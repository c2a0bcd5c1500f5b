// Hosts, by the rules of their dialog.
#include "base/text.h"
#include "ctl/field_arguments.h"
#include "ctl/records.h"
#include "link/host_saver.h"
#include "link/removal.h"
#include "site/differences.h"

#include <algorithm>

namespace tollwick::ctl {
namespace {

ExitStatus fetchHosts(Session& session) {
    const ExitStatus status = session.logIn();
    return status == ExitStatus::Done ? session.statusOf(session.requests.txGetAllHosts()) : status;
}

// What the host's rules ask, too: which telephony the service offers.
ExitStatus fetchForSaving(Session& session) {
    const ExitStatus status = fetchHosts(session);
    return status == ExitStatus::Done ? session.statusOf(session.requests.txGetSettings()) : status;
}

void list(Session& session, std::span<const HostRecord> hosts) {
    if (session.output.isJson())
        return session.output.document("hosts", recordsJson(hosts));
    Row heading;
    std::vector<Row> rows;
    for (const HostRecord& host : hosts) {
        heading.clear();
        Row row;
        for (const std::string_view name :
             {"display_name", "mail_domain", "active", "connect_using", "remote_uucp_name"}) {
            heading.emplace_back(name);
            row.push_back(shownField(host, name));
        }
        rows.push_back(std::move(row));
    }
    session.output.table(heading, rows);
}

// The dialog takes no key that makes another name; one that came with other characters stays.
bool isNodeName(const std::string& name, const HostRecord& before) {
    const auto isPart = [](unsigned char c) { return isNodeNameCharacter(c); };
    return std::all_of(name.begin(), name.end(), isPart) ||
           name == trimmed(before.remote_uucp_name.text());
}

// Checks and saves the current host with these fields changed, as Ok in the dialog would.
ExitStatus save(Session& session, std::span<const Assignment> assignments) {
    ServiceData& data = session.context.data;
    // The dialog's defaults where nothing is given, and what is given as it is.
    HostRecord changed = data.current_host;
    storeEntry(entryOf(data.current_host), true, changed);
    if (const auto status = assign(session, assignments, changed); status != ExitStatus::Done)
        return status;
    const HostEntry entry = entryAsStored(changed);
    if (!isNodeName(entry.remote_uucp_name, data.current_host))
        return session.refuse(Text::CtlNodeName);
    switch (HostSaver(session.context).save(entry, {}).outcome) {
    case HostSaveOutcome::Refused:
        return ExitStatus::Usage;
    case HostSaveOutcome::Stopped:
        return session.messages.endedWithQuestion() ? session.refuse(Text::CtlHostNotSaved)
                                                    : ExitStatus::ServiceRefused;
    case HostSaveOutcome::LinkFailed:
        return session.failure();
    case HostSaveOutcome::Saved:
        break;
    }
    list(session, {&data.current_host, 1});
    return ExitStatus::Done;
}

ExitStatus remove(Session& session, const HostRecord& host, bool keeps_directory) {
    if (keeps_directory)
        return session.statusOfChange(session.requests.txDeleteHost(host.record_number));
    switch (removeHost(session.context, host)) {
    case Removal::LinkFailed:
        return session.failure();
    case Removal::Refused:
        return session.serviceRefused(Text::HostNotRemoved);
    case Removal::Removed:
        break;
    }
    // A directory that the service keeps has been told.
    return session.requests.wasDone() ? ExitStatus::Done : ExitStatus::ServiceRefused;
}

} // namespace

ExitStatus listHosts(Session& session, const Arguments&) {
    const ExitStatus status = fetchHosts(session);
    if (status == ExitStatus::Done)
        list(session, session.context.data.hosts);
    return status;
}

ExitStatus showHost(Session& session, const Arguments& arguments) {
    if (const auto status = fetchHosts(session); status != ExitStatus::Done)
        return status;
    const HostRecord* host = findHost(session.context.data.hosts, arguments.words.front());
    if (!host)
        return session.notFound(Text::CtlNoHost, arguments.words.front());
    if (session.output.isJson())
        session.output.document("hosts", QJsonArray{recordJson(*host)});
    else
        session.output.table({}, fieldRows(*host));
    return ExitStatus::Done;
}

ExitStatus addHost(Session& session, const Arguments& arguments) {
    std::vector<Assignment> assignments;
    if (const auto status = readFields<HostRecord>(session, arguments.words, assignments);
        status != ExitStatus::Done)
        return status;
    if (const auto status = fetchForSaving(session); status != ExitStatus::Done)
        return status;
    session.context.data.current_host = EmptyHostRecord;
    return save(session, assignments);
}

ExitStatus changeHost(Session& session, const Arguments& arguments) {
    std::vector<Assignment> assignments;
    if (const auto status =
            readFields<HostRecord>(session, std::span(arguments.words).subspan(1), assignments);
        status != ExitStatus::Done)
        return status;
    if (const auto status = fetchForSaving(session); status != ExitStatus::Done)
        return status;
    const HostRecord* host = findHost(session.context.data.hosts, arguments.words.front());
    if (!host)
        return session.notFound(Text::CtlNoHost, arguments.words.front());
    session.context.data.current_host = *host;
    return save(session, assignments);
}

ExitStatus deleteHosts(Session& session, const Arguments& arguments) {
    if (const auto status = fetchHosts(session); status != ExitStatus::Done)
        return status;
    std::vector<HostRecord> wanted;
    for (const std::string& name : arguments.words) {
        const HostRecord* host = findHost(session.context.data.hosts, name);
        if (!host)
            return session.notFound(Text::CtlNoHost, name);
        if (std::find(wanted.begin(), wanted.end(), *host) == wanted.end())
            wanted.push_back(*host);
    }
    for (const HostRecord& host : wanted) {
        if (const auto status = remove(session, host, arguments.has("keep-directory"));
            status != ExitStatus::Done)
            return status;
        std::erase(session.context.data.hosts, host);
    }
    return ExitStatus::Done;
}

} // namespace tollwick::ctl
