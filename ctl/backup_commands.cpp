// Sites as files: saved, compared and restored.
#include "base/files.h"
#include "ctl/restorer.h"
#include "ctl/session.h"
#include "ctl/site_check.h"
#include "link/configuration.h"
#include "site/differences.h"
#include "site/site_file.h"

#include <system_error>

namespace tollwick::ctl {
namespace {

// Logs in and fetches what the options name.
ExitStatus fetchSite(Session& session, const RestoreOptions& wanted, Site& site) {
    if (const auto status = session.logIn(); status != ExitStatus::Done)
        return status;
    Requests& requests = session.requests;
    if ((wanted.settings && hasFailed(requests.txGetSettings())) ||
        (wanted.schedules && hasFailed(requests.txGetAllSchedules())) ||
        (wanted.hosts && hasFailed(requests.txGetAllHosts())))
        return session.failure();
    const ServiceData& data = session.context.data;
    site.is_backup = true;
    site.settings = data.settings;
    site.schedules = data.schedules;
    site.hosts = data.hosts;
    if (!wanted.scripts)
        return ExitStatus::Done;
    std::string cut_name;
    switch (fetchScripts(session.context, site.scripts, cut_name)) {
    case ScriptsOutcome::Fetched:
        return ExitStatus::Done;
    case ScriptsOutcome::Cut:
        session.messages.error(Text::CtlScriptCut, {cut_name});
        return ExitStatus::ServiceRefused;
    case ScriptsOutcome::LinkFailed:
        break;
    }
    return session.failure();
}

// What the rules of the dialogs refuse of a site.
ExitStatus refuseSite(Session& session, const std::string& file,
                      const std::optional<std::string>& problem) {
    return problem ? session.refuse(Text::CtlFileRefused, {file + ": " + *problem})
                   : ExitStatus::Done;
}

// Settings that the file does not name are taken from `unnamed`.
ExitStatus loadSite(Session& session, const std::string& file, Site& site,
                    const SettingsRecord& unnamed = {}) {
    try {
        site = SiteFile(toPath(file), SiteFile::UnknownKeys::Refuse).load(unnamed);
    } catch (const SiteFileError& error) {
        return session.refuse(Text::CtlFileRefused, {error.what()});
    }
    return refuseSite(session, file, siteProblem(site, session.texts));
}

QJsonObject toJson(const Difference& difference) {
    return {{"kind", difference.kind},
            {"name", difference.name},
            {"field", difference.field},
            {"first", difference.first},
            {"second", difference.second}};
}

void show(Session& session, const std::vector<Difference>& differences) {
    QJsonArray array;
    std::vector<Row> rows;
    for (const Difference& difference : differences) {
        array.append(toJson(difference));
        Row& row = rows.emplace_back();
        for (const QString& cell : {difference.kind, difference.name, difference.field,
                                    difference.first, difference.second})
            row.push_back(cell.toStdString());
    }
    if (session.output.isJson())
        session.output.document("differences", array);
    else if (!rows.empty())
        session.output.table({"kind", "name", "field", "first", "second"}, rows);
}

// The parts that "--only" names; false for a word that names none.
bool readOnly(const std::string& list, RestoreOptions& options) {
    options.settings = options.schedules = options.hosts = options.scripts = false;
    const std::pair<std::string_view, bool RestoreOptions::*> parts[] = {
        {"settings", &RestoreOptions::settings},
        {"schedules", &RestoreOptions::schedules},
        {"hosts", &RestoreOptions::hosts},
        {"scripts", &RestoreOptions::scripts}};
    for (std::string_view rest = list;;) {
        const std::string_view word = rest.substr(0, rest.find(','));
        bool is_part = false;
        for (const auto& [name, part] : parts)
            if (word == name)
                is_part = options.*part = true;
        if (!is_part)
            return false;
        if (word.size() == rest.size())
            return true;
        rest.remove_prefix(word.size() + 1);
    }
}

ExitStatus run(Session& session, Restorer& restorer) {
    const RestoreOutcome outcome = restorer.run();
    if (outcome == RestoreOutcome::Done)
        return ExitStatus::Done;
    const ExitStatus status =
        outcome == RestoreOutcome::Refused ? ExitStatus::ServiceRefused : session.failure();
    session.messages.error(Text::CtlRestoreStopped, {std::to_string(restorer.stepsDone()),
                                                     std::to_string(restorer.stepsLeft())});
    for (const std::string& step : restorer.left())
        session.messages.error(Text::CtlStepLeft, {step});
    return status;
}

} // namespace

ExitStatus backUp(Session& session, const Arguments& arguments) {
    const std::string& file = arguments.words.front();
    std::error_code ignored;
    if (std::filesystem::is_directory(toPath(file), ignored))
        return session.refuse(Text::CtlFileIsFolder, {file});
    Site site;
    if (const auto status = fetchSite(session, {}, site); status != ExitStatus::Done)
        return status;
    try {
        SiteFile(toPath(file)).save(site);
    } catch (const SiteFileError& error) {
        return session.refuse(Text::CtlFileRefused, {error.what()});
    }
    return ExitStatus::Done;
}

ExitStatus compare(Session& session, const Arguments& arguments) {
    Site first;
    Site second;
    if (const auto status = loadSite(session, arguments.words[0], first);
        status != ExitStatus::Done)
        return status;
    const ExitStatus status = arguments.words.size() == 2
                                  ? loadSite(session, arguments.words[1], second)
                                  : fetchSite(session, {}, second);
    if (status != ExitStatus::Done)
        return status;
    // What the one does not name it does not differ in.
    if (arguments.words.size() == 1)
        loadSite(session, arguments.words[0], first, second.settings);
    const std::vector<Difference> differences = differencesOf(first, second);
    show(session, differences);
    return differences.empty() ? ExitStatus::Done : ExitStatus::Different;
}

ExitStatus restore(Session& session, const Arguments& arguments) {
    RestoreOptions options;
    options.is_dry_run = arguments.has("dry-run");
    options.deletes = arguments.has("delete");
    if (const auto only = arguments.options.find("only");
        only != arguments.options.end() && !readOnly(only->second, options))
        return session.refuse(Text::CtlBadParts, {only->second});
    const std::string& file = arguments.words.front();
    Site wanted;
    Site present;
    auto status = loadSite(session, file, wanted);
    if (status == ExitStatus::Done)
        status = refuseSite(session, file, rulesProblem(wanted, session.texts));
    if (status == ExitStatus::Done)
        status = fetchSite(session, options, present);
    if (status == ExitStatus::Done)
        status = loadSite(session, file, wanted, present.settings);
    if (status == ExitStatus::Done && options.settings)
        status = refuseSite(session, file,
                            settingsProblem(wanted.settings, present.settings, session.texts));
    if (status != ExitStatus::Done)
        return status;
    QJsonArray steps;
    Restorer restorer(session.context, std::move(present), wanted, options,
                      [&](const std::string& step) {
                          session.progress.clear();
                          steps.append(QString::fromStdString(step));
                          if (!session.output.isJson())
                              session.output.line(step);
                      });
    status = run(session, restorer);
    if (session.output.isJson())
        session.output.document("steps", steps);
    return status;
}

} // namespace tollwick::ctl
