#include "rules/setting_rules.h"

#include "base/numeric.h"
#include "wire/record_packing.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr double kLastPort = 32766; // not 32767: wanted

constexpr StyledText kIpRestart{Text::RestartForIp, BoxIcon::Exclamation};
constexpr StyledText kPortRestart{Text::RestartForPort, BoxIcon::Exclamation};
constexpr StyledText kIpInvalid{Text::IpInvalid, BoxIcon::Critical};
constexpr StyledText kPortInvalid{Text::PortInvalid, BoxIcon::Critical};

constexpr AddressRule kAddressRules[] = {
    {setting_key::AdminIp,
     {Text::IpInvalid, BoxIcon::None},
     StyledText{Text::RestartForIp, BoxIcon::Critical},
     StyledText{Text::IpNotAttached, BoxIcon::Critical}},
    {setting_key::AdminPort, kPortInvalid, kPortRestart, {}},
    {setting_key::SmtpServiceIp, kIpInvalid, kIpRestart,
     StyledText{Text::IpNotAttachedSmtp, BoxIcon::Critical}},
    {setting_key::SmtpServicePort, kPortInvalid, kPortRestart, {}},
    {setting_key::SmtpForwardIp, kIpInvalid, {}, {}},
    {setting_key::SmtpForwardPort, kPortInvalid, {}, {}},
};

} // namespace

bool isAcceptableIpNumber(std::string_view text) {
    constexpr auto npos = std::string_view::npos;
    const std::size_t first_dot = text.find('.');
    const std::size_t second_dot = first_dot == npos ? npos : text.find('.', first_dot + 1);
    const std::size_t third_dot = second_dot == npos ? npos : text.find('.', second_dot + 1);
    if (third_dot == npos || text.find('.', third_dot + 1) != npos)
        return false;
    const auto part = [&](std::size_t start, std::size_t length) {
        return toInteger(numericValue(text.substr(start, length)));
    };
    const Integer first = part(0, first_dot);
    // The second part is read with the length of the third, which itself is not examined: wanted.
    const Integer second = part(first_dot + 1, third_dot - second_dot - 1);
    const Integer fourth = part(third_dot + 1, npos);
    const auto isByte = [](Integer number) { return number >= 0 && number <= 255; };
    return isByte(first) && isByte(second) && isByte(fourth);
}

bool InvalidIpNumber(std::string_view text, Prompter& prompter) {
    if (isAcceptableIpNumber(text))
        return false;
    prompter.beep();
    return true;
}

bool ContainsAnyChar(std::string_view text, std::string_view set) {
    return std::any_of(set.begin(), set.end(),
                       [&](char c) { return text.find(c) != std::string_view::npos; });
}

std::string NumberToText(Integer number) {
    return number == 0 ? std::string() : std::to_string(number);
}

std::optional<Long> portNumber(std::string_view text) {
    const double value = numericValue(text);
    if (!(value > 0 && value <= kLastPort))
        return {};
    return toLong(value);
}

const AddressRule* findAddressRule(std::string_view key) {
    for (const AddressRule& rule : kAddressRules)
        if (rule.key == key)
            return &rule;
    return nullptr;
}

std::optional<SettingProblem> textProblem(const SettingRow& row, const std::string& text,
                                          const SettingsRecord& settings) {
    const auto* place = std::get_if<TextSetting>(&row.place);
    if (!place)
        return {};
    const AddressRule* rule = findAddressRule(row.key);
    if (rule && !isAcceptableIpNumber(text))
        return SettingProblem{rule->invalid};
    if (isCommand(row) && ContainsAnyChar(text, kCommandCharacters))
        return SettingProblem{{Text::CommandInvalid, BoxIcon::Critical}, kCommandCharactersShown};
    SettingsRecord changed = settings;
    changed.*place->value = text;
    if (!fitsBlock(changed))
        return SettingProblem{{Text::SettingTooLarge, BoxIcon::Critical}};
    return {};
}

std::optional<SettingProblem> settingProblem(const SettingRow& row,
                                             const SettingsRecord& settings) {
    if (std::holds_alternative<TextSetting>(row.place))
        return textProblem(row, valueText(row, settings), settings);
    const AddressRule* rule = findAddressRule(row.key);
    if (rule && !portNumber(valueText(row, settings)))
        return SettingProblem{rule->invalid};
    return {};
}

std::optional<StyledText> noticeOf(const SettingRow& row, const SettingsRecord& before,
                                   const SettingsRecord& after) {
    const auto exclamation = [](Text text) { return StyledText{text, BoxIcon::Exclamation}; };
    if (const auto* text = std::get_if<TextSetting>(&row.place)) {
        if (row.key == setting_key::RemoteDebuggingLevel && !(after.*text->value).bytes().empty())
            return exclamation(Text::DebugLevelWarning);
    } else if (const auto* plain = std::get_if<SwitchSetting>(&row.place)) {
        if (after.*plain->value == kFalse || before.*plain->value != kFalse)
            return {};
        if (row.key == setting_key::DischargeCr)
            return exclamation(Text::DischargeCrNote);
        if (row.key == setting_key::ForceSendParams)
            return exclamation(Text::ForceSendParamsWarning);
    }
    const AddressRule* rule = findAddressRule(row.key);
    const bool has_changed = valueText(row, before) != valueText(row, after);
    return rule && has_changed ? rule->restart_notice : std::nullopt;
}

} // namespace tollwick
