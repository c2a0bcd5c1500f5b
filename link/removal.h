// Removing from the service what its lists hold. The console's own lists are left to the caller.
#pragma once

#include "link/service_context.h"

namespace tollwick {

enum class Removal {
    Removed,
    Refused,    // by the service, which has kept it; nothing has been told
    LinkFailed, // which has been told, and the link is closed
};

Removal removeSchedule(ServiceContext& context, const ScheduleRecord& schedule);
// Removes the host's spool directory, too, unless another of the data's hosts has it. A directory
// that the service keeps is told.
Removal removeHost(ServiceContext& context, const HostRecord& host);
Removal removeMail(ServiceContext& context, const OutboxRecord& mail);

} // namespace tollwick
