// The settings that the lists show and the editors change: one table of their keys, captions, icons
// and places in the settings record.
#pragma once

#include "base/string_table.h"
#include "wire/records.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace tollwick {

// The keys of rows that have rules of their own.
namespace setting_key {
inline constexpr std::string_view AdminIp = "adminip";
inline constexpr std::string_view AdminPort = "adminport";
inline constexpr std::string_view SmtpServiceIp = "SmtpServiceIp";
inline constexpr std::string_view SmtpServicePort = "SmtpServicePort";
inline constexpr std::string_view SmtpForwardIp = "smtpforwardip";
inline constexpr std::string_view SmtpForwardPort = "smtpforwardport";
inline constexpr std::string_view UucpPriorCmd = "uucppriorcmd";
inline constexpr std::string_view UucpAfterCmd = "uucpaftercmd";
inline constexpr std::string_view RemoteDebuggingLevel = "remotedebugginglevel";
inline constexpr std::string_view DischargeCr = "dischargecr";
inline constexpr std::string_view ForceSendParams = "forcesendparams";
} // namespace setting_key

struct TextSetting {
    VarText SettingsRecord::*value;
};
struct NumberSetting {
    Long SettingsRecord::*value;
};
struct SwitchSetting {
    Integer SettingsRecord::*value; // kTrue or kFalse
};
struct LogSetting {
    Integer SettingsRecord::*value;  // kTrue or kFalse
    Integer SettingsRecord::*period; // days
};

struct SettingRow {
    std::string_view node_key;
    Text caption;
    std::string_view key;   // told apart by case, too
    std::string_view image; // empty for a switch, whose icon tells its value
    std::variant<TextSetting, NumberSetting, SwitchSetting, LogSetting> place;
};

inline constexpr std::string_view kSwitchOnImage = "squareselected";
inline constexpr std::string_view kSwitchOffImage = "square";

// All of them, in the order of their lists.
std::span<const SettingRow> settingRows();

// The row with this key on this node, or nullptr.
const SettingRow* findSettingRow(std::string_view node_key, std::string_view key);

// What the row's second column and its icon show.
std::string valueText(const SettingRow& row, const SettingsRecord& settings);
std::string_view imageOf(const SettingRow& row, const SettingsRecord& settings);

} // namespace tollwick
