// Every text of the user interface, in the language of LangBase. The texts themselves, with their
// offsets and names, stand in resources/texts.def.
#pragma once

#include "base/number_types.h"

#include <string_view>

namespace tollwick {

// The offset of a text within its language block.
enum class Text : Integer {
#pragma push_macro("TEXT")
#undef TEXT
#define TEXT(offset, name, english, swedish) name = (offset),
#include "resources/texts.def"
#pragma pop_macro("TEXT")
};

inline constexpr Integer kEnglish = 1000;
inline constexpr Integer kSwedish = 4000;
// Offset of the text "Welcome", which stands in every language slot.
inline constexpr Integer kWelcome = 6100;

class StringTable {
public:
    // `LangBase` is the base id of a language block; any number is accepted, but only kEnglish and
    // kSwedish have a block.
    explicit StringTable(Integer LangBase) : lang_base_(LangBase) {}

    [[nodiscard]] Integer LangBase() const { return lang_base_; }

    // The text LangBase + offset, UTF-8, alive for the whole run. Throws RunTimeError 326 (resource
    // not found) when there is none; there is no fallback to English.
    [[nodiscard]] std::string_view operator()(Text text) const {
        return byOffset(static_cast<Integer>(text));
    }
    [[nodiscard]] std::string_view byOffset(int offset) const;

private:
    Integer lang_base_;
};

} // namespace tollwick
