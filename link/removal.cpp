#include "link/removal.h"

#include "rules/host_rules.h"

namespace tollwick {

Removal removeSchedule(ServiceContext& context, const ScheduleRecord& schedule) {
    return hasFailed(context.requests.txDeleteSchedule(schedule.record_number))
               ? Removal::LinkFailed
               : Removal::Removed;
}

Removal removeHost(ServiceContext& context, const HostRecord& host) {
    const std::string directory = host.spool_directory.text();
    if (hasFailed(context.requests.txDeleteHost(host.record_number)))
        return Removal::LinkFailed;
    if (!context.requests.wasDone())
        return Removal::Refused;
    if (isSpoolDirectoryShared(directory, host, context.data.hosts))
        return Removal::Removed;
    context.progress.setInfo(context.text(Text::StatusRemovingHostDirectory));
    if (hasFailed(context.requests.txDeleteHostDirectory(directory)))
        return Removal::LinkFailed;
    if (!context.requests.wasDone()) {
        context.prompter.beep();
        context.prompter.critical(context.text(Text::HostDirectoryNotRemoved));
    }
    return Removal::Removed;
}

Removal removeMail(ServiceContext& context, const OutboxRecord& mail) {
    bool removed = false;
    if (hasFailed(context.requests.txDeleteOutboxMail(mail, removed)))
        return Removal::LinkFailed;
    return removed ? Removal::Removed : Removal::Refused;
}

} // namespace tollwick
