// The mails that wait.
#include "base/numeric.h"
#include "ctl/records.h"
#include "ctl/session.h"

#include <algorithm>

namespace tollwick::ctl {
namespace {

ExitStatus fetchOutbox(Session& session) {
    const ExitStatus status = session.logIn();
    return status == ExitStatus::Done ? session.statusOf(session.requests.txGetAllOutbox())
                                      : status;
}

// The mails with these file names, in the order of the outbox; all for no name.
std::vector<OutboxRecord> mailsOf(const std::vector<std::string>& files,
                                  const std::vector<OutboxRecord>& outbox) {
    std::vector<OutboxRecord> mails;
    std::copy_if(outbox.begin(), outbox.end(), std::back_inserter(mails),
                 [&](const OutboxRecord& mail) {
                     return files.empty() || std::find(files.begin(), files.end(),
                                                       mail.file_name.text()) != files.end();
                 });
    return mails;
}

} // namespace

ExitStatus listOutbox(Session& session, const Arguments&) {
    if (const auto status = fetchOutbox(session); status != ExitStatus::Done)
        return status;
    const std::vector<OutboxRecord>& outbox = session.context.data.outbox;
    if (session.output.isJson()) {
        session.output.document("outbox", recordsJson(outbox));
        return ExitStatus::Done;
    }
    std::vector<Row> rows;
    rows.reserve(outbox.size());
    for (const OutboxRecord& mail : outbox)
        rows.push_back({mail.recipient.text(), mail.node.text(), groupedNumber(mail.size) + " kB",
                        mail.file_name.text()});
    session.output.table({"recipient", "node", "size", "file_name"}, rows);
    return ExitStatus::Done;
}

ExitStatus deleteMails(Session& session, const Arguments& arguments) {
    const std::vector<std::string>& files = arguments.words;
    if (files.empty() != arguments.has("all"))
        return session.refuse(Text::CtlFilesOrAll);
    if (const auto status = fetchOutbox(session); status != ExitStatus::Done)
        return status;
    const std::vector<OutboxRecord>& outbox = session.context.data.outbox;
    for (const std::string& file : files)
        if (mailsOf({file}, outbox).empty())
            return session.notFound(Text::CtlNoMail, file);
    auto outcome = ExitStatus::Done;
    for (const OutboxRecord& mail : mailsOf(files, outbox)) {
        bool removed = false;
        if (hasFailed(session.requests.txDeleteOutboxMail(mail, removed)))
            return session.failure();
        if (!removed)
            outcome = ExitStatus::ServiceRefused;
    }
    return outcome;
}

} // namespace tollwick::ctl
