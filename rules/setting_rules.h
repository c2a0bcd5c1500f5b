// The checks of the setting editors.
#pragma once

#include "base/prompter.h"
#include "base/string_table.h"
#include "rules/setting_rows.h"

#include <optional>
#include <string>
#include <string_view>

namespace tollwick {

// True when the text is an acceptable IP number: four parts between exactly three dots, the first,
// second and fourth in 0..255. Throws RunTimeError 6 when a part exceeds 16 bits.
bool isAcceptableIpNumber(std::string_view text);
// True, after a beep, when it is not.
bool InvalidIpNumber(std::string_view text, Prompter& prompter);

// True when any single character of `set` (ASCII) occurs in the text.
bool ContainsAnyChar(std::string_view text, std::string_view set);

// Decimal text without a leading blank; empty for 0.
std::string NumberToText(Integer number);

// The port that the text stands for, 1 to 32766 (0 for a fraction that rounds to it), or nothing.
std::optional<Long> portNumber(std::string_view text);

// kTrue for kFalse, and kFalse for any other value.
constexpr Integer flipped(Integer yes_no) {
    return yes_no == kFalse ? kTrue : kFalse;
}

// The characters that a command may not hold, as they are looked for and as the message lists them;
// that the two orders differ is wanted.
inline constexpr std::string_view kCommandCharacters = "\\/:*?<>|";
inline constexpr std::string_view kCommandCharactersShown = " \\/*:?<>|";

// Whether this row holds a command.
constexpr bool isCommand(const SettingRow& row) {
    return row.key == setting_key::UucpPriorCmd || row.key == setting_key::UucpAfterCmd;
}

// A message and the icon that its box shows: the editors differ in it, and this is wanted.
struct StyledText {
    Text text;
    BoxIcon icon;
};

// What is particular about an IP number or a port.
struct AddressRule {
    std::string_view key; // of its row
    StyledText invalid;
    std::optional<StyledText> restart_notice; // shown when the value has changed
    std::optional<StyledText> not_attached;   // set where the service's answer is looked at
};

// The rule of a row that holds an address, or nullptr.
const AddressRule* findAddressRule(std::string_view key);

// Why a text is refused as a setting, and what stands behind the message.
struct SettingProblem {
    StyledText message;
    std::string_view listed = {};
};
// The first problem that the settings would have with this text in place of the row's. Throws
// RunTimeError 6 when a part of an IP number exceeds 16 bits.
std::optional<SettingProblem> textProblem(const SettingRow& row, const std::string& text,
                                          const SettingsRecord& settings);

// The same for what the settings hold in the row, a port included.
std::optional<SettingProblem> settingProblem(const SettingRow& row, const SettingsRecord& settings);

// What is told about a setting that has been entered, before it is sent.
std::optional<StyledText> noticeOf(const SettingRow& row, const SettingsRecord& before,
                                   const SettingsRecord& after);

} // namespace tollwick
