#include "ctl/site_check.h"

#include "base/text.h"
#include "base/utf8.h"
#include "rules/host_rules.h"
#include "rules/schedule_rules.h"
#include "rules/setting_rules.h"
#include "wire/record_packing.h"

#include <set>

namespace tollwick::ctl {
namespace {

using Problem = std::optional<std::string>;

std::string placed(const char* list, std::size_t index, std::string_view problem) {
    return std::string(list) + '[' + std::to_string(index) + "]: " + std::string(problem);
}

Problem nameProblem(const Site& site, const StringTable& texts) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < site.hosts.size(); ++i) {
        const std::string name = trimmed(site.hosts[i].display_name.text());
        if (name.empty())
            return placed("hosts", i, texts(Text::HostNameMissing));
        if (!names.insert(toUpper(name)).second)
            return placed("hosts", i, filledIn(texts(Text::CtlNameTwice), {name}));
    }
    return {};
}

Problem scriptProblem(const Site& site, const StringTable& texts) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < site.scripts.size(); ++i) {
        const ScriptRecord& script = site.scripts[i];
        const std::string name = script.file_name.text();
        if (name.empty() || checkScriptName(name))
            return placed("scripts", i, texts(Text::ScriptNameIllegal));
        if (!names.insert(toUpper(name)).second)
            return placed("scripts", i, filledIn(texts(Text::CtlNameTwice), {name}));
        if (!fitsBlock(script))
            return placed("scripts", i, texts(Text::ScriptTooLarge));
    }
    return {};
}

Problem scheduleProblem(const Site& site, const StringTable& texts) {
    for (std::size_t i = 0; i < site.schedules.size(); ++i) {
        ScheduleRecord schedule = site.schedules[i];
        schedule.identity = 0; // or it would not be shown
        ScheduleEntry entry = *entryOf(schedule);
        if (const auto problem = checkSchedule(entry, scheduleIntervals(texts)))
            return placed("schedules", i, texts(problem->text));
    }
    return {};
}

} // namespace

std::optional<std::string> siteProblem(const Site& site, const StringTable& texts) {
    if (Problem problem = scriptProblem(site, texts))
        return problem;
    if (Problem problem = nameProblem(site, texts))
        return problem;
    if (!fitsBlock(site.settings))
        return "settings: " + std::string(texts(Text::SettingTooLarge));
    return {};
}

std::optional<std::string> rulesProblem(const Site& site, const StringTable& texts) {
    for (std::size_t i = 0; i < site.hosts.size(); ++i)
        if (const auto problem = checkHost(entryOf(site.hosts[i]), site.hosts[i], site.hosts))
            return placed("hosts", i,
                          filledIn(texts(problem->text), {std::to_string(problem->most)}));
    return scheduleProblem(site, texts);
}

std::optional<std::string> settingsProblem(const SettingsRecord& settings,
                                           const SettingsRecord& present,
                                           const StringTable& texts) {
    for (const SettingRow& row : settingRows()) {
        if (valueText(row, settings) == valueText(row, present))
            continue;
        if (const auto problem = settingProblem(row, settings))
            return std::string("settings: ")
                .append(texts(row.caption))
                .append(" ")
                .append(texts(problem->message.text))
                .append(problem->listed);
    }
    return {};
}

} // namespace tollwick::ctl
