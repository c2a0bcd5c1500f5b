// Login scripts.
#include "base/ansi.h"
#include "base/text.h"
#include "base/utf8.h"
#include "ctl/input.h"
#include "ctl/records.h"
#include "ctl/session.h"
#include "rules/host_rules.h"

#include <algorithm>

namespace tollwick::ctl {
namespace {

constexpr std::size_t kMaxScriptFile = 1 << 20; // bytes; what the service cannot take is refused

ExitStatus fetchNames(Session& session, std::vector<std::string>& names) {
    const ExitStatus status = session.logIn();
    return status == ExitStatus::Done ? session.statusOf(session.requests.txGetAllScriptFile(names))
                                      : status;
}

// With "\n" between the lines, whatever stands there, or with "\r\n".
std::string withLineEnds(std::string_view text, std::string_view line_end) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool is_pair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (text[i] == '\n' || text[i] == '\r')
            result.append(line_end);
        else
            result.push_back(text[i]);
        i += is_pair ? 1 : 0;
    }
    return result;
}

// The script with this name in the list, with or without its extension and without regard to case.
const std::string* findName(const std::vector<std::string>& names, const std::string& wanted) {
    for (const std::string& candidate : {wanted, completedScriptName(wanted)}) {
        const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
            return toUpper(name) == toUpper(candidate);
        });
        if (found != names.end())
            return &*found;
    }
    return nullptr;
}

// The script of a local file, as the service takes it.
ExitStatus readScript(Session& session, const std::string& file, std::string& text) {
    // From standard input the password comes first.
    if (const auto status = session.findPassword(); status != ExitStatus::Done)
        return status;
    const auto bytes = readInput(file, kMaxScriptFile, session.messages);
    if (!bytes)
        return ExitStatus::Usage;
    text = withLineEnds(isValidUtf8(*bytes) ? *bytes : fromAnsi(*bytes), "\r\n");
    if (text.starts_with(kByteOrderMark))
        text.erase(0, kByteOrderMark.size());
    std::string known = text;
    const std::string foreign = removeForeign(known);
    return foreign.empty() ? ExitStatus::Done
                           : session.refuse(Text::CtlForeignCharacters, {file, foreign});
}

} // namespace

ExitStatus listScripts(Session& session, const Arguments&) {
    std::vector<std::string> names;
    if (const auto status = fetchNames(session, names); status != ExitStatus::Done)
        return status;
    QJsonArray array;
    std::vector<Row> rows;
    for (const std::string& name : names) {
        array.append(QJsonObject{{"file_name", QString::fromStdString(name)}});
        rows.push_back({name});
    }
    if (session.output.isJson())
        session.output.document("scripts", array);
    else
        session.output.table({}, rows);
    return ExitStatus::Done;
}

ExitStatus showScript(Session& session, const Arguments& arguments) {
    std::vector<std::string> names;
    if (const auto status = fetchNames(session, names); status != ExitStatus::Done)
        return status;
    const std::string* name = findName(names, arguments.words.front());
    if (!name)
        return session.notFound(Text::CtlNoScript, arguments.words.front());
    Requests::Script received{};
    if (hasFailed(session.requests.txGetScript(*name, received)))
        return session.failure();
    if (received == Requests::Script::Cut) {
        session.messages.error(Text::CtlScriptCut, {*name});
        return ExitStatus::ServiceRefused;
    }
    const ScriptRecord& script = session.context.data.script;
    if (session.output.isJson())
        session.output.document("scripts", QJsonArray{recordJson(script)});
    else
        session.output.raw(withLineEnds(script.text.scriptText(), "\n"));
    return ExitStatus::Done;
}

ExitStatus saveScript(Session& session, const Arguments& arguments) {
    const std::string& file = arguments.words[1];
    const std::string name = completedScriptName(arguments.words[0]);
    if (name.empty())
        return session.refuse(Text::ScriptNameIllegal);
    if (const auto problem = checkScriptName(name))
        return session.refuse(problem->text);
    std::string text;
    if (const auto status = readScript(session, file, text); status != ExitStatus::Done)
        return status;
    if (!scriptFits(name, text))
        return session.refuse(Text::ScriptTooLarge);
    if (const auto status = session.logIn(); status != ExitStatus::Done)
        return status;
    return session.statusOfChange(session.requests.txSaveScript(name, text));
}

} // namespace tollwick::ctl
