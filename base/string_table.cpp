#include "base/string_table.h"

#include "base/run_time_error.h"

#include <algorithm>
#include <array>

namespace tollwick {
namespace {

struct Entry {
    int offset;
    std::string_view english;
    std::string_view swedish;
};

constexpr Entry kEntries[] = {
#pragma push_macro("TEXT")
#undef TEXT
#define TEXT(offset, name, english, swedish) {offset, english, swedish},
#include "resources/texts.def"
#pragma pop_macro("TEXT")
};
static_assert(std::is_sorted(std::begin(kEntries), std::end(kEntries),
                             [](const Entry& a, const Entry& b) { return a.offset <= b.offset; }),
              "the texts stand in ascending order, each offset once");

// Two blocks with all texts and five slots for later languages.
constexpr std::array kWelcomeSlots = {1000, 4000, 7000, 10000, 13000, 16000, 19000};
constexpr int kBlockSize = 3000;

} // namespace

std::string_view StringTable::byOffset(int offset) const {
    // The id counts, not the language: English finds Swedish texts from offset 3000 on. Wanted.
    const std::int64_t id = std::int64_t{lang_base_} + offset;
    for (const int slot : kWelcomeSlots)
        if (id == slot + kWelcome)
            return "Welcome";
    const bool has_texts = lang_base_ == kEnglish || lang_base_ == kSwedish;
    if (has_texts && id >= kEnglish && id < kSwedish + kBlockSize) {
        const bool swedish = id >= kSwedish;
        const auto wanted = static_cast<int>(id - (swedish ? kSwedish : kEnglish));
        const auto* found =
            std::lower_bound(std::begin(kEntries), std::end(kEntries), wanted,
                             [](const Entry& entry, int value) { return entry.offset < value; });
        if (found != std::end(kEntries) && found->offset == wanted)
            return swedish ? found->swedish : found->english;
    }
    throw RunTimeError(error_number::ResourceNotFound);
}

} // namespace tollwick
