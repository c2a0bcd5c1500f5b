#include "rules/list_order.h"

#include "base/utf8.h"

#include <algorithm>
#include <utility>

namespace tollwick {
namespace {

bool matches(const ListContents& contents, std::size_t row, std::string_view small_filter) {
    for (std::size_t column = 0; column < contents.columns.size(); ++column)
        if (toLower(contents.cell(row, column)).find(small_filter) != std::string::npos)
            return true;
    return false;
}

// Sorts rows by keys that are made once for each.
template <class MakeKey>
void sortBy(std::vector<std::size_t>& rows, bool descending, MakeKey makeKey) {
    using Keyed = std::pair<decltype(makeKey(0)), std::size_t>;
    std::vector<Keyed> keyed;
    keyed.reserve(rows.size());
    for (const std::size_t row : rows)
        keyed.emplace_back(makeKey(row), row);
    if (descending)
        std::ranges::stable_sort(keyed, std::ranges::greater(), &Keyed::first);
    else
        std::ranges::stable_sort(keyed, std::ranges::less(), &Keyed::first);
    std::ranges::transform(keyed, rows.begin(), &Keyed::second);
}

} // namespace

std::vector<std::size_t> orderedRows(const ListContents& contents, const ListSort& sort,
                                     std::string_view filter) {
    const std::string small_filter = toLower(filter);
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < contents.row_count; ++row)
        if (small_filter.empty() || matches(contents, row, small_filter))
            rows.push_back(row);

    const auto column = static_cast<std::size_t>(sort.column);
    if (sort.column < 0 || column >= contents.columns.size() || rows.empty())
        return rows;
    if (contents.value(rows.front(), column))
        sortBy(rows, sort.descending,
               [&](std::size_t row) { return contents.value(row, column).value_or(0); });
    else
        sortBy(rows, sort.descending,
               [&](std::size_t row) { return collationKey(contents.cell(row, column)); });
    return rows;
}

} // namespace tollwick
