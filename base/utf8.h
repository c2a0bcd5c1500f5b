// Reading and writing single code points of UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace tollwick {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Removes the first code point from `utf8`, which must not be empty, and returns it. A malformed
// sequence is removed byte by byte, each byte giving kReplacementCharacter.
char32_t takeCodePoint(std::string_view& utf8);

void appendCodePoint(std::string& utf8, char32_t code_point);

// Upper case of the letters of the western European code page; others stay as they are.
std::string toUpper(std::string_view utf8);

// Small letters of the same code page, for comparing without regard to case.
std::string toLower(std::string_view utf8);

// Texts are in alphabetical order, without regard to case, when the bytes of their keys are: å, ä
// and ö are the last letters.
std::string collationKey(std::string_view utf8);

bool isValidUtf8(std::string_view text);

} // namespace tollwick
