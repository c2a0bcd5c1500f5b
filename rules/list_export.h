// Rows of a list as text for other programs. All texts are UTF-8.
#pragma once

#include <string>
#include <vector>

namespace tollwick {

using TableRow = std::vector<std::string>;

// A line for each row, its cells parted by tabs. A tab or line break within a cell becomes a blank.
std::string tabSeparated(const std::vector<TableRow>& rows);

// Comma-separated values as RFC 4180 has them, after a byte order mark by which spreadsheets know
// UTF-8.
std::string commaSeparated(const std::vector<TableRow>& rows);

} // namespace tollwick
