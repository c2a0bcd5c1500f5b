#include "base/utf8.h"

#include <cstddef>

namespace tollwick {
namespace {

// Length of the sequence that starts with `lead`, and the lead's own bits; 0 when it cannot start
// one.
std::size_t sequenceLength(unsigned char lead, char32_t& bits) {
    if (lead < 0x80) {
        bits = lead;
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        bits = lead & 0x1F;
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        bits = lead & 0x0F;
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        bits = lead & 0x07;
        return 4;
    }
    return 0;
}

bool isScalarOfLength(char32_t code_point, std::size_t length) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code_point >= kSmallest[length] && code_point <= 0x10FFFF &&
           (code_point < 0xD800 || code_point > 0xDFFF);
}

// The capitals of ASCII and of Latin-1 have their small letters 0x20 further on.
char32_t smallLetter(char32_t c) {
    if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return c + 0x20;
    if (c == 0x178) // Y with diaeresis
        return 0xFF;
    if (c == 0x152 || c == 0x160 || c == 0x17D) // OE, S and Z with caron
        return c + 1;
    return c;
}

} // namespace

char32_t takeCodePoint(std::string_view& utf8) {
    char32_t code_point = 0;
    const std::size_t length = sequenceLength(static_cast<unsigned char>(utf8[0]), code_point);
    bool valid = length != 0 && length <= utf8.size();
    for (std::size_t i = 1; valid && i < length; ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        valid = (byte & 0xC0) == 0x80;
        code_point = (code_point << 6) | (byte & 0x3F);
    }
    if (!valid || !isScalarOfLength(code_point, length)) {
        utf8.remove_prefix(1);
        return kReplacementCharacter;
    }
    utf8.remove_prefix(length);
    return code_point;
}

void appendCodePoint(std::string& utf8, char32_t code_point) {
    const auto tail = [&](int shift) {
        utf8.push_back(static_cast<char>(0x80 | ((code_point >> shift) & 0x3F)));
    };
    if (code_point < 0x80) {
        utf8.push_back(static_cast<char>(code_point));
    } else if (code_point < 0x800) {
        utf8.push_back(static_cast<char>(0xC0 | (code_point >> 6)));
        tail(0);
    } else if (code_point < 0x10000) {
        utf8.push_back(static_cast<char>(0xE0 | (code_point >> 12)));
        tail(6);
        tail(0);
    } else {
        utf8.push_back(static_cast<char>(0xF0 | (code_point >> 18)));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::string toUpper(std::string_view utf8) {
    std::string upper;
    while (!utf8.empty()) {
        char32_t c = takeCodePoint(utf8);
        if ((c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
            c -= 0x20;
        else if (c == 0xFF)
            c = 0x178; // y with diaeresis
        else if (c == 0x153 || c == 0x161 || c == 0x17E)
            c -= 1; // oe, s and z with caron
        appendCodePoint(upper, c);
    }
    return upper;
}

std::string toLower(std::string_view utf8) {
    std::string small;
    small.reserve(utf8.size());
    while (!utf8.empty())
        appendCodePoint(small, smallLetter(takeCodePoint(utf8)));
    return small;
}

std::string collationKey(std::string_view utf8) {
    std::string key;
    key.reserve(utf8.size());
    while (!utf8.empty()) {
        const char32_t c = smallLetter(takeCodePoint(utf8));
        appendCodePoint(key, c == U'å'   ? U'z' + 1
                             : c == U'ä' ? U'z' + 2
                             : c == U'ö' ? U'z' + 3
                                         : c);
    }
    return key;
}

bool isValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const bool is_replacement = text.substr(0, 3) == "\xEF\xBF\xBD";
        if (takeCodePoint(text) == kReplacementCharacter && !is_replacement)
            return false;
    }
    return true;
}

} // namespace tollwick
