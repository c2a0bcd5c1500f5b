#include "ctl/output.h"

#include "base/utf8.h"
#include "ctl/messages.h"

#include <QJsonDocument>

#include <algorithm>
#include <cstdio>

namespace tollwick::ctl {
namespace {

constexpr std::size_t kGap = 2; // columns between two texts

// Combining marks stand on the character before them, East Asian characters take two columns.
std::size_t widthOf(char32_t c) {
    if ((c >= 0x300 && c <= 0x36F) || c == 0x200B)
        return 0;
    const bool is_wide = (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) ||
                         (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
                         (c >= 0xFE30 && c <= 0xFE6F) || (c >= 0xFF00 && c <= 0xFF60) ||
                         (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1FAFF) ||
                         (c >= 0x20000 && c <= 0x3FFFD);
    return is_wide ? 2 : 1;
}

// A cell stays on its line.
std::string cellText(const std::string& text) {
    std::string cell = printable(text);
    std::replace(cell.begin(), cell.end(), '\n', ' ');
    return cell;
}

} // namespace

std::size_t displayWidth(std::string_view utf8) {
    std::size_t width = 0;
    while (!utf8.empty())
        width += widthOf(takeCodePoint(utf8));
    return width;
}

void Output::table(const Row& heading, const std::vector<Row>& rows) {
    std::vector<Row> lines;
    if (!heading.empty())
        lines.push_back(heading);
    lines.insert(lines.end(), rows.begin(), rows.end());
    std::vector<std::size_t> widths;
    for (Row& line : lines) {
        widths.resize(std::max(widths.size(), line.size()));
        for (std::size_t column = 0; column < line.size(); ++column) {
            line[column] = cellText(line[column]);
            widths[column] = std::max(widths[column], displayWidth(line[column]));
        }
    }
    for (const Row& line : lines) {
        std::string text;
        std::size_t gap = 0;
        for (std::size_t column = 0; column < line.size(); ++column) {
            if (!line[column].empty())
                text.append(gap, ' ').append(line[column]);
            gap = (line[column].empty() ? gap : 0) + kGap + widths[column] -
                  displayWidth(line[column]);
        }
        raw(text.append("\n"));
    }
}

void Output::document(const QString& key, const QJsonValue& value) {
    raw(QJsonDocument(QJsonObject{{key, value}}).toJson(QJsonDocument::Indented).toStdString());
}

void Output::documentLine(const QString& key, const QJsonValue& value) {
    raw(QJsonDocument(QJsonObject{{key, value}}).toJson(QJsonDocument::Compact).toStdString() +
        '\n');
    flush();
}

void Output::line(std::string_view text) {
    raw(cellText(std::string(text)) + '\n');
    flush();
}

void Output::raw(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void Output::flush() {
    std::fflush(stdout);
}

bool Output::finish() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

} // namespace tollwick::ctl
