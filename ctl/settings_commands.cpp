// The settings of the service, by the rules of their editors.
#include "base/text.h"
#include "ctl/field_arguments.h"
#include "ctl/records.h"
#include "rules/setting_rules.h"

namespace tollwick::ctl {
namespace {

// The row of the lists that this field belongs to; a log's period belongs to its log. Nullptr for a
// field that no editor changes.
template <class Type>
const SettingRow* rowOf(Type SettingsRecord::*member) {
    for (const SettingRow& row : settingRows()) {
        const bool is_its = std::visit(
            [member](const auto& place) {
                const auto isMember = [member](auto other) {
                    if constexpr (std::is_same_v<decltype(other), Type SettingsRecord::*>)
                        return other == member;
                    else
                        return false;
                };
                if constexpr (requires { place.period; })
                    return isMember(place.value) || isMember(place.period);
                else
                    return isMember(place.value);
            },
            row.place);
        if (is_its)
            return &row;
    }
    return nullptr;
}

const SettingRow* rowOf(std::string_view name) {
    const SettingRow* row = nullptr;
    forEachField<SettingsRecord>([&](const auto& field) {
        if (field.name == name)
            row = rowOf(field.member);
    });
    return row;
}

ExitStatus fetchSettings(Session& session) {
    const ExitStatus status = session.logIn();
    return status == ExitStatus::Done ? session.statusOf(session.requests.txGetSettings()) : status;
}

// Whether the editors would let the setting pass; tells why not.
bool isAccepted(Session& session, const SettingRow& row, const SettingsRecord& settings) {
    const auto problem = settingProblem(row, settings);
    if (problem)
        session.messages.tell(
            problem->message.icon,
            std::string(session.texts(problem->message.text)).append(problem->listed));
    return !problem;
}

void showSettings(Session& session) {
    const SettingsRecord& settings = session.context.data.settings;
    if (session.output.isJson())
        return session.output.document("settings", recordJson(settings));
    session.output.table({}, fieldRows(settings));
}

} // namespace

ExitStatus listSettings(Session& session, const Arguments&) {
    const ExitStatus status = fetchSettings(session);
    if (status == ExitStatus::Done)
        showSettings(session);
    return status;
}

ExitStatus setSettings(Session& session, const Arguments& arguments) {
    std::vector<Assignment> assignments;
    if (const auto status = readFields<SettingsRecord>(session, arguments.words, assignments);
        status != ExitStatus::Done)
        return status;
    for (Assignment& assignment : assignments) {
        const SettingRow* row = rowOf(assignment.name);
        if (row == nullptr)
            return session.refuse(Text::CtlFieldFixed, {assignment.name});
        if (row->key == setting_key::RemoteDebuggingLevel)
            assignment.value = trimmed(assignment.value);
    }
    if (const auto status = fetchSettings(session); status != ExitStatus::Done)
        return status;
    SettingsRecord& settings = session.context.data.settings;
    const SettingsRecord before = settings;
    assign(session, assignments, settings);
    for (const Assignment& assignment : assignments)
        if (!isAccepted(session, *rowOf(assignment.name), settings))
            return ExitStatus::Usage;
    for (const Assignment& assignment : assignments)
        if (const auto notice = noticeOf(*rowOf(assignment.name), before, settings))
            session.messages.tell(notice->icon, session.texts(notice->text));
    // The service stores them with either of its two further answers, too.
    const Integer answer = session.requests.txSaveSettings();
    return answer > 0 ? ExitStatus::Done : session.statusOfChange(answer);
}

} // namespace tollwick::ctl
