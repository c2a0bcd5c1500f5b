// Windows-1252 for systems that have no ANSI code page of their own.
#include "base/ansi.h"
#include "base/utf8.h"

#include <algorithm>
#include <array>

namespace tollwick {
namespace {

// Code points of the bytes 0x80 to 0x9F. The five bytes without a character of their own stand for
// the control codes of the same number, as Windows has it.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char toByte(char32_t code_point) {
    if (code_point < 0x80 || (code_point >= 0xA0 && code_point <= 0xFF))
        return static_cast<char>(code_point);
    const auto* found = std::find(kHighControls.begin(), kHighControls.end(), code_point);
    if (found == kHighControls.end())
        return '?';
    return static_cast<char>(0x80 + (found - kHighControls.begin()));
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

} // namespace

std::string toAnsi(std::string_view utf8) {
    if (isAscii(utf8))
        return std::string(utf8);
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty())
        bytes.push_back(toByte(takeCodePoint(utf8)));
    return bytes;
}

std::string fromAnsi(std::string_view bytes) {
    if (isAscii(bytes))
        return std::string(bytes);
    std::string utf8;
    utf8.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        appendCodePoint(utf8, byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80] : byte);
    }
    return utf8;
}

} // namespace tollwick
