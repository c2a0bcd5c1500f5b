// Conversion between UTF-8, the encoding of every text inside the program, and the ANSI code page
// of the wire, the registry and the modem catalogue: the system's own on Windows, Windows-1252
// elsewhere.
#pragma once

#include <string>
#include <string_view>

namespace tollwick {

// A character that the code page lacks, and every malformed UTF-8 sequence, becomes "?".
std::string toAnsi(std::string_view utf8);

// Every byte of a single-byte code page has a character, so that toAnsi(fromAnsi(bytes)) gives the
// same bytes back.
std::string fromAnsi(std::string_view bytes);

// Takes the characters out of the UTF-8 text that the code page lacks; gives each of them once.
std::string removeForeign(std::string& utf8);

} // namespace tollwick
