// Which rows of a list are shown, and in what order.
#pragma once

#include "rules/list_contents.h"

#include <string_view>
#include <vector>

namespace tollwick {

struct ListSort {
    int column = -1; // none: the order of the contents
    bool descending = false;

    friend bool operator==(const ListSort&, const ListSort&) = default;
};

// The positions in the contents of the rows with `filter` (UTF-8) somewhere in a cell, without
// regard to case, in the order of `sort`. Rows that sort alike keep their order; a column that the
// contents lack sorts nothing; an empty filter keeps all.
std::vector<std::size_t> orderedRows(const ListContents& contents, const ListSort& sort,
                                     std::string_view filter);

} // namespace tollwick
