// How the user has arranged a list: the widths of its columns and the column it is sorted by, kept
// in the settings for each list by the key of its node.
#pragma once

#include "base/settings_store.h"
#include "rules/list_order.h"

#include <string_view>
#include <vector>

namespace tollwick {

struct ListLayout {
    std::vector<int> widths; // twips; empty when the user has changed none
    ListSort sort;
};

// What does not fit a list of this many columns, or is no number, reads as not arranged.
ListLayout readListLayout(Settings& settings, std::string_view node_key, std::size_t columns);
void storeListLayout(Settings& settings, std::string_view node_key, const ListLayout& layout);

} // namespace tollwick
