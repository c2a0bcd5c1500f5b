// Blanks and marks in texts that come from files, records and fields.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

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

// The part of `bytes` before its trailing NULs and blanks.
constexpr std::string_view withoutTrailingBlanks(std::string_view bytes) {
    if (!std::is_constant_evaluated()) {
        // Eight alike at a time: the end of most records is empty.
        constexpr std::uint64_t kBlanks = 0x2020202020202020;
        std::uint64_t word = 0;
        for (; bytes.size() >= sizeof word; bytes.remove_suffix(sizeof word)) {
            std::memcpy(&word, bytes.data() + bytes.size() - sizeof word, sizeof word);
            if (word != 0 && word != kBlanks)
                break;
        }
    }
    while (!bytes.empty() && (bytes.back() == '\0' || bytes.back() == ' '))
        bytes.remove_suffix(1);
    return bytes;
}

// The part of `bytes` before its trailing NULs.
constexpr std::string_view withoutTrailingNuls(std::string_view bytes) {
    while (!bytes.empty() && bytes.back() == '\0')
        bytes.remove_suffix(1);
    return bytes;
}

// The text with the parts in place of "%1", "%2" and so on.
inline std::string filledIn(std::string_view text, std::initializer_list<std::string_view> parts) {
    std::string filled;
    for (; !text.empty(); text.remove_prefix(1)) {
        const std::size_t part = text.size() > 1 && text[0] == '%' && text[1] >= '1'
                                     ? static_cast<std::size_t>(text[1] - '1')
                                     : parts.size();
        if (part < parts.size()) {
            filled += parts.begin()[part];
            text.remove_prefix(1);
        } else {
            filled += text[0];
        }
    }
    return filled;
}

} // namespace tollwick
