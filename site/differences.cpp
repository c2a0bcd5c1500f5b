#include "site/differences.h"

#include "base/text.h"
#include "base/utf8.h"
#include "rules/host_entry.h"

#include <algorithm>

namespace tollwick {
namespace {

QString qString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

bool isSameName(std::string_view first, std::string_view second) {
    return toUpper(trimmed(first)) == toUpper(trimmed(second));
}

// The three passwords as they read.
HostRecord readable(const HostRecord& host) {
    HostRecord plain = host;
    const HostEntry entry = entryOf(host);
    plain.password = entry.password;
    plain.uucp_password = entry.uucp_password;
    plain.ras_password = entry.ras_password;
    return plain;
}

template <class Record>
bool isEqualInWhatCounts(const Record& first, const Record& second) {
    bool is_equal = true;
    forEachField<Record>([&](const auto& field) {
        is_equal = is_equal && (!counts(field.name) || first.*field.member == second.*field.member);
    });
    return is_equal;
}

template <class Record>
void addFields(const QString& kind, const QString& name, const Record& first, const Record& second,
               std::vector<Difference>& differences) {
    forEachField<Record>([&](const auto& field) {
        if (!counts(field.name) || first.*field.member == second.*field.member)
            return;
        const QString differs = QStringLiteral("differs");
        const bool is_secret = isSecret(field.name);
        differences.push_back({kind, name, qString(field.name),
                               is_secret ? differs : fieldText(field.name, first.*field.member),
                               is_secret ? differs : fieldText(field.name, second.*field.member)});
    });
}

QString describe(const ScheduleRecord& schedule) {
    const auto word = [](std::string_view field, Integer value) {
        return wordOf(field, value).value_or(QString::number(value));
    };
    return word("day", schedule.day) + u' ' +
           (schedule.timed != 0 ? qString(schedule.at_time.text())
                                : word("interval", schedule.interval) + u' ' +
                                      qString(schedule.between_first.text()) + u'-' +
                                      qString(schedule.between_second.text()));
}

void addSchedules(const Site& first, const Site& second, std::vector<Difference>& differences) {
    const QString kind = QStringLiteral("schedule");
    const std::vector<int> match = matchSchedules(first.schedules, second.schedules);
    for (std::size_t i = 0; i < match.size(); ++i) {
        const ScheduleRecord& schedule = first.schedules[i];
        const QString name = QString::number(schedule.record_number);
        if (match[i] < 0)
            differences.push_back({kind, name, {}, describe(schedule), {}});
        else
            addFields(kind, name, schedule, second.schedules[static_cast<std::size_t>(match[i])],
                      differences);
    }
    for (std::size_t i = 0; i < second.schedules.size(); ++i)
        if (std::ranges::find(match, static_cast<int>(i)) == match.end()) {
            const ScheduleRecord& schedule = second.schedules[i];
            differences.push_back(
                {kind, QString::number(schedule.record_number), {}, {}, describe(schedule)});
        }
}

void addHosts(const Site& first, const Site& second, std::vector<Difference>& differences) {
    const QString kind = QStringLiteral("host");
    for (const HostRecord& host : first.hosts) {
        const QString name = qString(trimmed(host.display_name.text()));
        if (const HostRecord* other = findHost(second.hosts, host.display_name.text()))
            addFields(kind, name, readable(host), readable(*other), differences);
        else
            differences.push_back({kind, name, {}, name, {}});
    }
    for (const HostRecord& host : second.hosts)
        if (!findHost(first.hosts, host.display_name.text())) {
            const QString name = qString(trimmed(host.display_name.text()));
            differences.push_back({kind, name, {}, {}, name});
        }
}

void addScripts(const Site& first, const Site& second, std::vector<Difference>& differences) {
    const QString kind = QStringLiteral("script");
    for (const ScriptRecord& script : first.scripts) {
        const QString name = qString(script.file_name.text());
        const ScriptRecord* other = findScript(second.scripts, script.file_name.text());
        if (!other)
            differences.push_back({kind, name, {}, name, {}});
        else if (!isEqual(script, *other))
            differences.push_back({kind, name, QStringLiteral("text"), QStringLiteral("differs"),
                                   QStringLiteral("differs")});
    }
    for (const ScriptRecord& script : second.scripts)
        if (!findScript(first.scripts, script.file_name.text())) {
            const QString name = qString(script.file_name.text());
            differences.push_back({kind, name, {}, {}, name});
        }
}

} // namespace

bool counts(std::string_view field) {
    static constexpr std::string_view kOfTheService[] = {"identity", "state", "record_number",
                                                         "service_version"};
    return std::ranges::find(kOfTheService, field) == std::end(kOfTheService);
}

bool isEqual(const HostRecord& first, const HostRecord& second) {
    return isEqualInWhatCounts(readable(first), readable(second));
}
bool isEqual(const ScheduleRecord& first, const ScheduleRecord& second) {
    return isEqualInWhatCounts(first, second);
}
bool isEqual(const SettingsRecord& first, const SettingsRecord& second) {
    return isEqualInWhatCounts(first, second);
}
bool isEqual(const ScriptRecord& first, const ScriptRecord& second) {
    return first.text.scriptText() == second.text.scriptText();
}

const HostRecord* findHost(const std::vector<HostRecord>& hosts, std::string_view display_name) {
    const auto found = std::ranges::find_if(hosts, [&](const HostRecord& host) {
        return isSameName(host.display_name.text(), display_name);
    });
    return found == hosts.end() ? nullptr : &*found;
}

const ScriptRecord* findScript(const std::vector<ScriptRecord>& scripts,
                               std::string_view file_name) {
    const auto found = std::ranges::find_if(scripts, [&](const ScriptRecord& script) {
        return isSameName(script.file_name.text(), file_name);
    });
    return found == scripts.end() ? nullptr : &*found;
}

std::vector<int> matchSchedules(const std::vector<ScheduleRecord>& first,
                                const std::vector<ScheduleRecord>& second) {
    std::vector<int> match(first.size(), -1);
    std::vector<bool> is_taken(second.size());
    const auto matchWhere = [&](const auto& belongs) {
        for (std::size_t i = 0; i < first.size(); ++i)
            for (std::size_t j = 0; j < second.size() && match[i] < 0; ++j)
                if (!is_taken[j] && belongs(first[i], second[j])) {
                    match[i] = static_cast<int>(j);
                    is_taken[j] = true;
                }
    };
    matchWhere([](const auto& a, const auto& b) { return isEqual(a, b); });
    matchWhere([](const auto& a, const auto& b) { return a.record_number == b.record_number; });
    return match;
}

std::vector<Difference> differencesOf(const Site& first, const Site& second) {
    std::vector<Difference> differences;
    addFields(QStringLiteral("setting"), QString(), first.settings, second.settings, differences);
    addSchedules(first, second, differences);
    addHosts(first, second, differences);
    addScripts(first, second, differences);
    return differences;
}

} // namespace tollwick
