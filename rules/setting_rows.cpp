#include "rules/setting_rows.h"

#include "rules/node_keys.h"

namespace tollwick {
namespace {

using S = SettingsRecord;

constexpr std::string_view kSwitch;

// clang-format off
constexpr SettingRow kSettingRows[] = {
    {node::Admin, Text::RowAdminIp,   setting_key::AdminIp,   "netadress", TextSetting{&S::admin_ip}},
    {node::Admin, Text::RowAdminPort, setting_key::AdminPort, "portin",    NumberSetting{&S::admin_port}},

    {node::Options, Text::RowDocViewer,         "docviewer",         "paper", TextSetting{&S::doc_viewer}},
    {node::Options, Text::RowAllowPriority,     "allowpriority",     kSwitch, SwitchSetting{&S::allow_priority}},
    {node::Options, Text::RowScheduleActivated, "Scheduleactivated", kSwitch, SwitchSetting{&S::schedule_activated}},

    {node::UucpDaemon, Text::RowUucpPriorCmd,         setting_key::UucpPriorCmd,         "command", TextSetting{&S::uucp_prior_command}},
    {node::UucpDaemon, Text::RowUucpAfterCmd,         setting_key::UucpAfterCmd,         "command", TextSetting{&S::uucp_after_command}},
    {node::UucpDaemon, Text::RowRemoteDebuggingLevel, setting_key::RemoteDebuggingLevel, "debug16", TextSetting{&S::remote_debugging_level}},
    {node::UucpDaemon, Text::RowDischargeCr,          setting_key::DischargeCr,          kSwitch,   SwitchSetting{&S::discharge_cr}},
    {node::UucpDaemon, Text::RowForceSendParams,      setting_key::ForceSendParams,      kSwitch,   SwitchSetting{&S::force_send_params}},

    {node::SmtpServer, Text::RowSmtpServiceIp,   setting_key::SmtpServiceIp,   "netadress", TextSetting{&S::smtp_service_ip}},
    {node::SmtpServer, Text::RowSmtpServicePort, setting_key::SmtpServicePort, "portin",    NumberSetting{&S::smtp_service_port}},

    {node::SmtpForward, Text::RowSmtpForwardIp,   setting_key::SmtpForwardIp,   "netadress", TextSetting{&S::smtp_forward_ip}},
    {node::SmtpForward, Text::RowSmtpForwardPort, setting_key::SmtpForwardPort, "portin",    NumberSetting{&S::smtp_forward_port}},

    {node::Logs, Text::RowMailLogging,         "maillogging",         kSwitch, LogSetting{&S::mail_logging, &S::mail_log_period}},
    {node::Logs, Text::RowUucpTransferLogging, "uucptransferlogging", kSwitch, LogSetting{&S::uucp_transfer_logging, &S::uucp_transfer_log_period}},
    {node::Logs, Text::RowSmtpLogging,         "smtplogging",         kSwitch, LogSetting{&S::smtp_logging, &S::smtp_log_period}},
    {node::Logs, Text::RowScriptLogging,       "scriptlogging",       kSwitch, LogSetting{&S::script_logging, &S::script_log_period}},
    {node::Logs, Text::RowComLogging,          "comlogging",          kSwitch, LogSetting{&S::com_logging, &S::com_log_period}},
    {node::Logs, Text::RowUucpCmdLogging,      "uucpcmdlogging",      kSwitch, LogSetting{&S::uucp_command_logging, &S::uucp_command_log_period}},
    {node::Logs, Text::RowUucpAdvLogging,      "uucpadvlogging",      kSwitch, LogSetting{&S::uucp_advanced_logging, &S::uucp_advanced_log_period}},
};
// clang-format on

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

} // namespace

std::span<const SettingRow> settingRows() {
    return kSettingRows;
}

const SettingRow* findSettingRow(std::string_view node_key, std::string_view key) {
    for (const SettingRow& row : kSettingRows)
        if (row.node_key == node_key && row.key == key)
            return &row;
    return nullptr;
}

std::string valueText(const SettingRow& row, const SettingsRecord& settings) {
    return std::visit(
        Overloaded{[&](TextSetting text) { return (settings.*text.value).text(); },
                   [&](NumberSetting number) { return std::to_string(settings.*number.value); },
                   [&](SwitchSetting) { return std::string("-"); },
                   [&](LogSetting log) { return std::to_string(settings.*log.period); }},
        row.place);
}

std::string_view imageOf(const SettingRow& row, const SettingsRecord& settings) {
    const auto ofSwitch = [&](Integer SettingsRecord::*value) {
        return settings.*value != kFalse ? kSwitchOnImage : kSwitchOffImage;
    };
    if (const auto* plain = std::get_if<SwitchSetting>(&row.place))
        return ofSwitch(plain->value);
    if (const auto* log = std::get_if<LogSetting>(&row.place))
        return ofSwitch(log->value);
    return row.image;
}

} // namespace tollwick
