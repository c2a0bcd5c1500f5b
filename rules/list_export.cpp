#include "rules/list_export.h"

#include "base/text.h"

#include <algorithm>
#include <string_view>

namespace tollwick {
namespace {

template <class Encode>
void appendLine(std::string& text, const TableRow& row, char separator, const char* end,
                Encode encode) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0)
            text += separator;
        text += encode(row[i]);
    }
    text += end;
}

std::string onOneLine(std::string cell) {
    std::ranges::replace_if(
        cell, [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return cell;
}

std::string quoted(const std::string& cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos)
        return cell;
    std::string text = "\"";
    for (const char c : cell)
        text.append(c == '"' ? 2 : 1, c);
    return text + '"';
}

} // namespace

std::string tabSeparated(const std::vector<TableRow>& rows) {
    std::string text;
    for (const TableRow& row : rows)
        appendLine(text, row, '\t', "\n", onOneLine);
    return text;
}

std::string commaSeparated(const std::vector<TableRow>& rows) {
    std::string text(kByteOrderMark);
    for (const TableRow& row : rows)
        appendLine(text, row, ',', "\r\n", quoted);
    return text;
}

} // namespace tollwick
