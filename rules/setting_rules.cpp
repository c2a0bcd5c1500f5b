#include "rules/setting_rules.h"

#include "base/numeric.h"
#include "rules/setting_rows.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr double kLastPort = 32766; // not 32767: wanted

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

} // namespace tollwick
