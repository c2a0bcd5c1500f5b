#include "link/configuration.h"

namespace tollwick {

ScriptsOutcome fetchScripts(ServiceContext& context, std::vector<ScriptRecord>& scripts,
                            std::string& cut_name) {
    std::vector<std::string> names;
    if (hasFailed(context.requests.txGetAllScriptFile(names)))
        return ScriptsOutcome::LinkFailed;
    scripts.clear();
    for (const std::string& name : names) {
        Requests::Script received{};
        if (hasFailed(context.requests.txGetScript(name, received)))
            return ScriptsOutcome::LinkFailed;
        if (received == Requests::Script::Cut) {
            cut_name = name;
            return ScriptsOutcome::Cut;
        }
        if (received == Requests::Script::None) // a blank name, which nothing can be asked for by
            continue;
        scripts.push_back(context.data.script);
        scripts.back().file_name = name; // as it is listed
    }
    return ScriptsOutcome::Fetched;
}

} // namespace tollwick
