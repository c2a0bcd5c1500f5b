#include "site/field_text.h"

#include "base/utf8.h"

#include <algorithm>
#include <charconv>

namespace tollwick {
namespace {

constexpr FieldWord kYesNo[] = {{"yes", kTrue}, {"no", kFalse}};
constexpr FieldWord kTimed[] = {{"yes", 1}, {"no", 0}};
constexpr FieldWord kDays[] = {{"monday", 0},   {"tuesday", 1},  {"wednesday", 2}, {"thursday", 3},
                               {"friday", 4},   {"saturday", 5}, {"sunday", 6},    {"weekdays", 7},
                               {"weekends", 8}, {"everyday", 9}};
constexpr FieldWord kIntervals[] = {{"5min", 0},   {"10min", 1},   {"15min", 2},  {"20min", 3},
                                    {"30min", 4},  {"1hour", 5},   {"2hours", 6}, {"3hours", 7},
                                    {"6hours", 8}, {"12hours", 9}, {"none", 10}};
constexpr FieldWord kConnections[] = {{"modem", 0}, {"dialup", 1}, {"tcpip", 2}};
constexpr FieldWord kProtocols[] = {{"g", 0}, {"t", 1}, {"G", 2}};
constexpr FieldWord kPacketSizes[] = {{"none", 0}, {"32", 1},   {"64", 2},   {"128", 3}, {"256", 4},
                                      {"512", 5},  {"1024", 6}, {"2048", 7}, {"4096", 8}};
constexpr FieldWord kWindowSizes[] = {{"none", 0}, {"1", 1}, {"2", 2}, {"3", 3},
                                      {"4", 4},    {"5", 5}, {"6", 6}, {"7", 7}};
constexpr FieldWord kSpeeds[] = {{"1200", 0},  {"2400", 1},  {"4800", 2},  {"9600", 3},
                                 {"19200", 4}, {"38400", 5}, {"57600", 6}, {"115200", 7}};
constexpr FieldWord kDataBits[] = {{"8", 0}, {"7", 1}};
constexpr FieldWord kStopBits[] = {{"one", 0}, {"two", 1}}; // digits would be taken for positions
constexpr FieldWord kParities[] = {{"none", 0}, {"even", 1}, {"odd", 2}};
constexpr FieldWord kComPorts[] = {{"com1", 0},   {"com2", 1},   {"com3", 2},   {"com4", 3},
                                   {"com5", 4},   {"com6", 5},   {"com7", 6},   {"com8", 7},
                                   {"com9", 8},   {"com10", 9},  {"com11", 10}, {"com12", 11},
                                   {"com13", 12}, {"com14", 13}, {"com15", 14}, {"com16", 15}};

struct WordList {
    std::string_view field_name;
    std::span<const FieldWord> words;
};
constexpr WordList kWordLists[] = {
    {"day", kDays},
    {"timed", kTimed},
    {"interval", kIntervals},
    {"active", kYesNo},
    {"connect_using", kConnections},
    {"uucp_protocol", kProtocols},
    {"packet_size", kPacketSizes},
    {"window_size", kWindowSizes},
    {"com_port", kComPorts},
    {"connect_speed", kSpeeds},
    {"data_bits", kDataBits},
    {"stop_bits", kStopBits},
    {"parity", kParities},
    {"do_not_use_tapi", kYesNo},
    {"default_domain", kYesNo},
    {"do_not_use_active_connection", kYesNo},
    {"transport_when_in_queue", kYesNo},
    {"schedule_activated", kYesNo},
    {"allow_priority", kYesNo},
    {"force_send_params", kYesNo},
    {"discharge_cr", kYesNo},
    {"mail_logging", kYesNo},
    {"uucp_transfer_logging", kYesNo},
    {"smtp_logging", kYesNo},
    {"script_logging", kYesNo},
    {"uucp_advanced_logging", kYesNo},
    {"uucp_command_logging", kYesNo},
    {"com_logging", kYesNo},
};

// By its exact spelling, else without regard to case: the protocols differ in it.
const FieldWord* findWord(std::span<const FieldWord> words, std::string_view text) {
    const auto exact = std::find_if(words.begin(), words.end(),
                                    [&](const FieldWord& word) { return word.word == text; });
    if (exact != words.end())
        return &*exact;
    const auto found = std::find_if(words.begin(), words.end(), [&](const FieldWord& word) {
        return toLower(word.word) == toLower(text);
    });
    return found == words.end() ? nullptr : &*found;
}

FieldProblem noWord(std::span<const FieldWord> words) {
    std::string list;
    for (const FieldWord& word : words)
        list.append(list.empty() ? "" : ", ").append(word.word);
    return {Text::CtlWordExpected, list};
}

} // namespace

std::span<const FieldWord> wordsOf(std::string_view field_name) {
    for (const WordList& list : kWordLists)
        if (list.field_name == field_name)
            return list.words;
    return {};
}

bool isSecret(std::string_view field) {
    return field.ends_with("password");
}

std::optional<QString> wordOf(std::string_view field, Long value) {
    const std::span<const FieldWord> words = wordsOf(field);
    if (!words.empty() && words.front().word == kYesNo[0].word && value != kFalse)
        value = words.front().number; // whatever is not no
    const auto found = std::find_if(words.begin(), words.end(), [value](const FieldWord& word) {
        return word.number == value;
    });
    if (found == words.end())
        return {};
    return QString::fromLatin1(found->word.data(), static_cast<qsizetype>(found->word.size()));
}

namespace detail {

std::optional<FieldProblem> readNumber(std::string_view field_name, const std::string& text,
                                       Long least, Long most, Long& number) {
    const std::span<const FieldWord> words = wordsOf(field_name);
    if (const FieldWord* word = findWord(words, text)) {
        number = word->number;
        return {};
    }
    Long value = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    const bool is_number = read.ec == std::errc() && read.ptr == end;
    const auto isOfWord = [value](const FieldWord& word) { return word.number == value; };
    if (!words.empty() && (!is_number || std::none_of(words.begin(), words.end(), isOfWord)))
        return noWord(words);
    if (!is_number || value < least || value > most)
        return FieldProblem{Text::CtlNumberExpected,
                            std::to_string(least) + " - " + std::to_string(most)};
    number = value;
    return {};
}

std::optional<FieldProblem> textProblem(const std::string& text, std::size_t width) {
    std::string known = text;
    if (const std::string foreign = removeForeign(known); !foreign.empty())
        return FieldProblem{Text::CtlForeignCharacters, foreign};
    if (std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x20; }))
        return FieldProblem{Text::CtlControlCharacter, {}};
    if (toAnsi(text).size() > width)
        return FieldProblem{Text::CtlTextTooLong, std::to_string(width)};
    return {};
}

} // namespace detail
} // namespace tollwick
