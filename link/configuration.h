// The configuration of a service as a backup holds it.
#pragma once

#include "link/service_context.h"

#include <string>
#include <vector>

namespace tollwick {

enum class ScriptsOutcome {
    Fetched,
    Cut,        // one is longer than a record and arrived cut
    LinkFailed, // which has been told
};

// Fetches all login scripts. After Cut `cut_name` is the one, UTF-8.
ScriptsOutcome fetchScripts(ServiceContext& context, std::vector<ScriptRecord>& scripts,
                            std::string& cut_name);

} // namespace tollwick
