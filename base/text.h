// Blanks and marks in texts that come from files, records and fields.
#pragma once

#include <string>
#include <string_view>

namespace tollwick {

// What some editors put before the first line of a UTF-8 file.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The part of `text` without blanks around it; `blanks` lists what counts as one. It points into
// `text`.
constexpr std::string_view withoutBlanks(std::string_view text, std::string_view blanks = " ") {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The same, as a text of its own.
inline std::string trimmed(std::string_view text) {
    return std::string(withoutBlanks(text));
}

constexpr bool isBlank(std::string_view text) {
    return withoutBlanks(text).empty();
}

} // namespace tollwick
