#include "site/field_text.h"

#include <algorithm>
#include <iterator>

namespace tollwick {
namespace {

struct Word {
    std::string_view field;
    int value;
    const char* word;
};

constexpr Word kWords[] = {
    {"day", 0, "monday"},          {"day", 1, "tuesday"},         {"day", 2, "wednesday"},
    {"day", 3, "thursday"},        {"day", 4, "friday"},          {"day", 5, "saturday"},
    {"day", 6, "sunday"},          {"day", 7, "weekdays"},        {"day", 8, "weekends"},
    {"day", 9, "everyday"},        {"timed", 1, "yes"},           {"timed", 0, "no"},
    {"interval", 0, "5min"},       {"interval", 1, "10min"},      {"interval", 2, "15min"},
    {"interval", 3, "20min"},      {"interval", 4, "30min"},      {"interval", 5, "1hour"},
    {"interval", 6, "2hours"},     {"interval", 7, "3hours"},     {"interval", 8, "6hours"},
    {"interval", 9, "12hours"},    {"connect_using", 0, "modem"}, {"connect_using", 1, "dialup"},
    {"connect_using", 2, "tcpip"}, {"uucp_protocol", 0, "g"},     {"uucp_protocol", 1, "t"},
    {"parity", 0, "none"},         {"parity", 1, "even"},         {"parity", 2, "odd"}};
// The words are compared in small letters, so that of this one has its own.
constexpr Word kWindowedG{"uucp_protocol", 2, "G"};

constexpr std::string_view kSwitches[] = {
    "schedule_activated",     "allow_priority", "force_send_params",
    "discharge_cr",           "mail_logging",   "uucp_transfer_logging",
    "smtp_logging",           "script_logging", "uucp_advanced_logging",
    "uucp_command_logging",   "com_logging",    "active",
    "do_not_use_tapi",        "default_domain", "do_not_use_active_connection",
    "transport_when_in_queue"};

bool isSwitch(std::string_view field) {
    return std::ranges::find(kSwitches, field) != std::end(kSwitches);
}

} // namespace

std::optional<QString> wordOf(std::string_view field, int value) {
    if (isSwitch(field))
        return value == kFalse ? QStringLiteral("no") : QStringLiteral("yes");
    if (field == kWindowedG.field && value == kWindowedG.value)
        return QString::fromLatin1(kWindowedG.word);
    for (const Word& word : kWords)
        if (word.field == field && word.value == value)
            return QString::fromLatin1(word.word);
    return {};
}

std::optional<int> valueOfWord(std::string_view field, const QString& word) {
    if (field == kWindowedG.field && word == QLatin1StringView(kWindowedG.word))
        return kWindowedG.value;
    const QString lower = word.toLower();
    if (isSwitch(field)) {
        if (lower == QLatin1StringView("yes"))
            return kTrue;
        if (lower == QLatin1StringView("no"))
            return kFalse;
    }
    for (const Word& each : kWords)
        if (each.field == field && lower == QLatin1StringView(each.word))
            return each.value;
    return {};
}

bool isSecret(std::string_view field) {
    return field.ends_with("password");
}

} // namespace tollwick
