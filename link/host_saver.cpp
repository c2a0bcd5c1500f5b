#include "link/host_saver.h"

namespace tollwick {

bool HostSaver::hasTelephony() const {
    return context_.data.settings.service_version >= kTelephonyVersion;
}

HostSaveResult HostSaver::refuse(const HostProblem& problem) {
    const std::string text = filledIn(context_.text(problem.text), {std::to_string(problem.most)});
    context_.prompter.beep();
    context_.prompter.tell(problem.icon, text);
    return {HostSaveOutcome::Refused, problem.field};
}

SpoolOutcome HostSaver::removeDirectory(const std::string& directory) {
    context_.progress.setInfo(context_.text(Text::StatusRemovingOldHostDirectory));
    if (hasFailed(context_.requests.txDeleteHostDirectory(directory)))
        return SpoolOutcome::Failed;
    if (context_.requests.wasDone())
        return SpoolOutcome::Decided;
    context_.prompter.beep();
    context_.prompter.critical(context_.text(Text::OldDirectoryNotRemoved));
    return SpoolOutcome::Stopped;
}

HostSaveResult HostSaver::save(const HostEntry& entered,
                               const std::optional<std::string>& script_text) {
    ServiceData& data = context_.data;
    HostEntry entry = entered;
    if (const auto problem = checkHost(entry, data.current_host, data.hosts))
        return refuse(*problem);

    // A number that does not fit is found here, before the service has been asked for anything.
    HostRecord trial = data.current_host;
    storeEntry(entry, hasTelephony(), trial);

    if (const auto ended = saveScript(entry, script_text))
        return *ended;

    std::string directory;
    const SpoolSteps steps{
        [this](Text question, Answer default_button) {
            return context_.prompter.ask(BoxIcon::Critical, context_.text(question),
                                         default_button);
        },
        [this](const std::string& old_directory) { return removeDirectory(old_directory); }};
    switch (decideSpoolDirectory(entry, data.current_host, data.hosts, steps, directory)) {
    case SpoolOutcome::Stopped:
        context_.progress.setInfo(context_.text(Text::Ready));
        return {HostSaveOutcome::Stopped, {}};
    case SpoolOutcome::Failed:
        return {HostSaveOutcome::LinkFailed, {}};
    case SpoolOutcome::Decided:
        break;
    }
    return {saveRecord(entry, directory), {}};
}

std::optional<HostSaveResult> HostSaver::saveScript(HostEntry& entry,
                                                    const std::optional<std::string>& script_text) {
    const std::string name = trimmed(entry.script_file_name);
    if (const auto problem = checkScriptName(name))
        return refuse(*problem);
    entry.script_file_name = completedScriptName(name);
    if (entry.script_file_name.empty() || !script_text)
        return {};
    if (!scriptFits(entry.script_file_name, *script_text))
        return refuse({Text::ScriptTooLarge, BoxIcon::Critical, HostField::ScriptText});
    context_.progress.setInfo(context_.text(Text::StatusSavingScript));
    if (hasFailed(context_.requests.txSaveScript(entry.script_file_name, *script_text)))
        return HostSaveResult{HostSaveOutcome::LinkFailed, {}};
    return {};
}

HostSaveOutcome HostSaver::saveRecord(const HostEntry& entry, const std::string& spool_directory) {
    ServiceData& data = context_.data;
    if (exceedsHostLookupTimeout(entry)) {
        context_.prompter.beep();
        context_.prompter.exclamation(context_.text(Text::HostLookupTooLong));
    }
    const HostRecord before = data.current_host;
    const bool is_new = before.state == 0;
    storeEntry(entry, hasTelephony(), data.current_host);
    data.current_host.spool_directory = spool_directory;

    context_.progress.setInfo(
        context_.text(is_new ? Text::StatusSavingNewHost : Text::StatusUpdatingHost));
    if (hasFailed(context_.requests.txSaveHost(is_new))) {
        data.current_host = before;
        return HostSaveOutcome::LinkFailed;
    }
    if (is_new && data.current_host.state == 0)
        context_.requests.txGetAllHosts(); // the reply did not say what the service made of it
    else if (is_new)
        data.hosts.push_back(data.current_host);
    context_.progress.setInfo(context_.text(Text::Ready));
    return HostSaveOutcome::Saved;
}

} // namespace tollwick
