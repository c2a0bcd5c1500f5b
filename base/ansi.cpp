#include "base/ansi.h"

#include "base/utf8.h"

namespace tollwick {

std::string removeForeign(std::string& utf8) {
    std::string kept;
    std::string foreign;
    for (std::string_view rest = utf8; !rest.empty();) {
        std::string character;
        appendCodePoint(character, takeCodePoint(rest));
        if (fromAnsi(toAnsi(character)) == character)
            kept += character;
        else if (foreign.find(character) == std::string::npos)
            foreign += character;
    }
    utf8 = std::move(kept);
    return foreign;
}

} // namespace tollwick
