// Makes MODEMS.DAT, the modem catalogue of the console, from its readable table.
// Usage: compile_modems TABLE CATALOGUE
//
// The table is UTF-8, one modem a line, cells separated by tabs. Lines that are empty or begin with
// "#" are skipped; the first other line names the columns. Blank cells at the end of a line may be
// left out. A cell that is blank stays blank in the catalogue, where the console knows the usual
// value.
#include "base/little_endian.h"
#include "base/modem_catalogue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace modem_width = tollwick::modem_width;

namespace {

enum Column : std::size_t {
    Make,
    Model,
    MaxSpeed,
    Init,
    Attention,
    HangUp,
    Reset,
    Answer,
    Dial,
    Busy,
    Connect,
    ColumnCount
};

struct ColumnRule {
    std::string_view name;
    std::size_t width; // in the catalogue, in bytes
};

constexpr std::array<ColumnRule, ColumnCount> kColumns = {{{"make", modem_width::Make},
                                                           {"model", modem_width::Model},
                                                           {"max_speed", sizeof(std::int32_t)},
                                                           {"init", modem_width::Init},
                                                           {"attention", modem_width::Attention},
                                                           {"hang-up", modem_width::HangUp},
                                                           {"reset", modem_width::Reset},
                                                           {"answer", modem_width::Answer},
                                                           {"dial", modem_width::Dial},
                                                           {"busy", modem_width::Busy},
                                                           {"connect", modem_width::Connect}}};

using Row = std::array<std::string, ColumnCount>;

// What a person can put right in the table.
struct TableError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string inQuotes(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::vector<std::string_view> cellsOf(std::string_view line) {
    std::vector<std::string_view> cells;
    for (;;) {
        const std::size_t tab = line.find('\t');
        std::string_view cell = line.substr(0, tab);
        cell.remove_prefix(std::min(cell.find_first_not_of(' '), cell.size()));
        cells.push_back(cell.substr(0, cell.find_last_not_of(' ') + 1));
        if (tab == std::string_view::npos)
            return cells;
        line.remove_prefix(tab + 1);
    }
}

// The characters that every Western code page has at the same place: ASCII and those from U+00A0 to
// U+00FF, which UTF-8 writes as C2 or C3 and one byte more.
std::string toLatin1(std::string_view utf8) {
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const auto next = static_cast<unsigned char>(i + 1 < utf8.size() ? utf8[i + 1] : 0);
        if (lead >= 0x20 && lead < 0x7F) {
            bytes.push_back(utf8[i]);
        } else if ((lead == 0xC2 && next >= 0xA0 && next <= 0xBF) ||
                   (lead == 0xC3 && next >= 0x80 && next <= 0xBF)) {
            bytes.push_back(static_cast<char>(lead == 0xC2 ? next : next + 0x40));
            ++i;
        } else {
            throw TableError("has a character that is not Latin-1");
        }
    }
    return bytes;
}

std::int32_t speedOf(std::string_view cell) {
    std::int32_t speed = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), speed);
    if (error != std::errc{} || end != cell.data() + cell.size() || speed <= 0)
        throw TableError(inQuotes(cell) + " is not a speed");
    return speed;
}

void checkHeading(const std::vector<std::string_view>& cells) {
    const bool right = std::equal(
        cells.begin(), cells.end(), kColumns.begin(), kColumns.end(),
        [](std::string_view cell, const ColumnRule& column) { return cell == column.name; });
    if (right)
        return;
    std::string names;
    for (const ColumnRule& column : kColumns)
        names.append(names.empty() ? "" : ", ").append(column.name);
    throw TableError("the first line must name the columns: " + names);
}

Row rowOf(const std::vector<std::string_view>& cells) {
    if (cells.size() <= Init || cells.size() > ColumnCount)
        throw TableError("has " + std::to_string(cells.size()) + " cells; " +
                         std::to_string(Init + 1) + " to " + std::to_string(ColumnCount) +
                         " are right");
    Row row;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        row[i] = toLatin1(cells[i]);
        if (i != MaxSpeed && row[i].size() > kColumns[i].width)
            throw TableError(std::string(kColumns[i].name) + " is longer than " +
                             std::to_string(kColumns[i].width) + " bytes: " + inQuotes(cells[i]));
    }
    if (row[Make].empty() || row[Model].empty())
        throw TableError("has no make or no model");
    speedOf(row[MaxSpeed]);
    return row;
}

std::vector<Row> readTable(std::istream& table) {
    std::vector<Row> rows;
    std::set<std::pair<std::string, std::string>> known;
    bool heading_seen = false;
    std::string line;
    for (std::size_t number = 1; std::getline(table, line); ++number) {
        try {
            if (line.ends_with('\r'))
                line.pop_back();
            if (line.empty() || line.starts_with('#'))
                continue;
            if (!heading_seen) {
                checkHeading(cellsOf(line));
                heading_seen = true;
                continue;
            }
            Row row = rowOf(cellsOf(line));
            if (!known.emplace(row[Make], row[Model]).second)
                throw TableError(inQuotes(row[Make] + ' ' + row[Model]) + " is there already");
            if (!rows.empty() && row[Make] < rows.back()[Make])
                throw TableError(inQuotes(row[Make]) + " belongs before " +
                                 inQuotes(rows.back()[Make]));
            rows.push_back(std::move(row));
        } catch (const TableError& error) {
            throw TableError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    if (rows.empty())
        throw TableError("there are no modems in it");
    return rows;
}

template <class Number>
void append(std::string& bytes, Number value) {
    char stored[sizeof(Number)];
    tollwick::storeLittleEndian(value, stored);
    bytes.append(stored, sizeof stored);
}

std::string catalogueOf(const std::vector<Row>& rows) {
    std::string bytes;
    append(bytes, static_cast<std::int32_t>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::size_t start = bytes.size();
        const auto text = [&](Column column) {
            bytes.append(rows[i][column]);
            bytes.append(kColumns[column].width - rows[i][column].size(), ' ');
        };
        append(bytes, std::int16_t{0}); // not deleted
        append(bytes, static_cast<std::int32_t>(i + 1));
        for (const Column column :
             {Make, Model, Init, Attention, HangUp, Reset, Answer, Dial, Busy})
            text(column);
        append(bytes, speedOf(rows[i][MaxSpeed]));
        text(Connect);
        if (bytes.size() - start != tollwick::ModemCatalogue::kRecordSize)
            throw std::logic_error("a record does not have its size");
    }
    return bytes;
}

// The file appears whole or not at all.
void writeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::path temporary = file;
    temporary += ".new";
    std::ofstream stream(temporary, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    std::error_code error;
    if (stream)
        std::filesystem::rename(temporary, file, error);
    if (stream && !error)
        return;
    std::error_code ignored;
    std::filesystem::remove(temporary, ignored);
    throw std::runtime_error("cannot be written");
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::cerr << "Usage: compile_modems TABLE CATALOGUE\n";
        return 1;
    }
    const char* file = argv[1];
    try {
        std::ifstream table(file, std::ios::binary);
        if (!table)
            throw std::runtime_error("cannot be read");
        const std::string catalogue = catalogueOf(readTable(table));
        file = argv[2];
        writeFile(file, catalogue);
    } catch (const std::exception& error) {
        std::cerr << "compile_modems: " << file << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
