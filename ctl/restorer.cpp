#include "ctl/restorer.h"

#include "base/text.h"
#include "link/removal.h"
#include "site/differences.h"

#include <algorithm>

namespace tollwick {
namespace {

RestoreOutcome outcomeOf(Integer failed) {
    return hasFailed(failed) ? RestoreOutcome::LinkFailed : RestoreOutcome::Done;
}

RestoreOutcome outcomeOf(Removal removal) {
    switch (removal) {
    case Removal::Removed:
        return RestoreOutcome::Done;
    case Removal::Refused:
        return RestoreOutcome::Refused;
    case Removal::LinkFailed:
        break;
    }
    return RestoreOutcome::LinkFailed;
}

std::string nameOf(const ScheduleRecord& schedule) {
    const std::string day =
        wordOf("day", schedule.day).value_or(QString::number(schedule.day)).toStdString();
    return day + ' ' +
           (schedule.timed != 0
                ? schedule.at_time.text()
                : schedule.between_first.text() + '-' + schedule.between_second.text());
}

} // namespace

RestoreOutcome Restorer::run() {
    plan();
    for (const Step& step : steps_) {
        say_(step.text);
        if (options_.is_dry_run)
            continue;
        context_.progress.setCount(WorkCount{done_, steps_.size()});
        const RestoreOutcome outcome = step.take();
        context_.progress.setCount({});
        if (outcome != RestoreOutcome::Done)
            return outcome;
        ++done_;
    }
    return RestoreOutcome::Done;
}

std::vector<std::string> Restorer::left() const {
    std::vector<std::string> texts;
    for (std::size_t i = done_; i < steps_.size(); ++i)
        texts.push_back(steps_[i].text);
    return texts;
}

void Restorer::plan() {
    // What is asked of the lists while hosts are removed is what the service holds.
    context_.data.settings = present_.settings;
    context_.data.schedules = present_.schedules;
    context_.data.hosts = present_.hosts;
    if (options_.scripts)
        planScripts();
    if (options_.hosts)
        planHosts();
    if (options_.schedules)
        planSchedules();
    if (options_.settings)
        planSettings();
}

void Restorer::add(Text text, std::string_view name, std::function<RestoreOutcome()> take) {
    steps_.push_back({filledIn(context_.text(text), {name}), std::move(take)});
}

// The service has no request that removes a script.
void Restorer::planScripts() {
    for (const ScriptRecord& script : wanted_.scripts) {
        const ScriptRecord* present = findScript(present_.scripts, script.file_name.text());
        if (!present || !isEqual(*present, script))
            add(Text::RestoreScript, script.file_name.text(), [this, &script] {
                return outcomeOf(context_.requests.txSaveScript(script.file_name.text(),
                                                                script.text.scriptText()));
            });
    }
}

void Restorer::planHosts() {
    for (const HostRecord& host : wanted_.hosts) {
        const HostRecord* present = findHost(present_.hosts, host.display_name.text());
        if (!present || !isEqual(*present, host))
            add(present ? Text::RestoreHost : Text::RestoreNewHost,
                trimmed(host.display_name.text()),
                [this, &host, present] { return saveHost(host, present); });
    }
    if (!options_.deletes)
        return;
    for (const HostRecord& host : present_.hosts)
        if (!findHost(wanted_.hosts, host.display_name.text()))
            add(Text::RestoreRemoveHost, trimmed(host.display_name.text()), [this, &host] {
                const Removal removal = removeHost(context_, host);
                if (removal == Removal::Removed)
                    std::erase_if(context_.data.hosts, [&](const HostRecord& each) {
                        return each.record_number == host.record_number;
                    });
                return outcomeOf(removal);
            });
}

RestoreOutcome Restorer::saveHost(const HostRecord& wanted, const HostRecord* present) {
    ServiceData& data = context_.data;
    data.current_host = wanted;
    data.current_host.state = present ? present->state : Integer{0};
    data.current_host.record_number = present ? present->record_number : 0;
    if (hasFailed(context_.requests.txSaveHost(present == nullptr)))
        return RestoreOutcome::LinkFailed;
    if (present)
        std::ranges::replace_if(
            data.hosts,
            [&](const HostRecord& each) { return each.record_number == present->record_number; },
            data.current_host);
    else
        data.hosts.push_back(data.current_host);
    return RestoreOutcome::Done;
}

void Restorer::planSchedules() {
    const std::vector<int> match = matchSchedules(wanted_.schedules, present_.schedules);
    for (std::size_t i = 0; i < match.size(); ++i) {
        const ScheduleRecord& schedule = wanted_.schedules[i];
        const ScheduleRecord* present =
            match[i] < 0 ? nullptr : &present_.schedules[static_cast<std::size_t>(match[i])];
        if (!present || !isEqual(*present, schedule))
            add(present ? Text::RestoreSchedule : Text::RestoreNewSchedule, nameOf(schedule),
                [this, &schedule, present] { return saveSchedule(schedule, present); });
    }
    if (!options_.deletes)
        return;
    for (std::size_t i = 0; i < present_.schedules.size(); ++i)
        if (std::ranges::find(match, static_cast<int>(i)) == match.end())
            add(Text::RestoreRemoveSchedule, nameOf(present_.schedules[i]),
                [this, &schedule = present_.schedules[i]] {
                    return outcomeOf(removeSchedule(context_, schedule));
                });
}

RestoreOutcome Restorer::saveSchedule(const ScheduleRecord& wanted, const ScheduleRecord* present) {
    ScheduleRecord& current = context_.data.current_schedule;
    current = wanted;
    current.identity = present ? present->identity : Integer{0};
    current.record_number = present ? present->record_number : 0;
    return outcomeOf(context_.requests.txSaveSchedule(present == nullptr));
}

void Restorer::planSettings() {
    if (isEqual(present_.settings, wanted_.settings))
        return;
    add(Text::RestoreSettings, {}, [this] {
        const Single version = present_.settings.service_version; // the service's own
        context_.data.settings = wanted_.settings;
        context_.data.settings.service_version = version;
        const Integer answer = context_.requests.txSaveSettings();
        if (hasFailed(answer))
            return RestoreOutcome::LinkFailed;
        // The service stores them with either of its two further answers, too.
        return answer > 0 || context_.requests.wasDone() ? RestoreOutcome::Done
                                                         : RestoreOutcome::Refused;
    });
}

} // namespace tollwick
