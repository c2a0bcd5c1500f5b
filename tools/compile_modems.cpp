// Makes MODEMS.DAT, the modem catalogue of the console, from its readable table.
// Usage: compile_modems TABLE CATALOGUE
//
// The table is UTF-8, one modem a line, cells separated by tabs. Lines that are empty or begin with
// "#" are skipped; the first other line names the columns. Blank cells at the end of a line may be
// left out. A cell that is blank stays blank in the catalogue, where the console knows the usual
// value.
#include "base/files.h"
#include "base/modem_catalogue.h"
#include "base/text.h"
#include "base/utf8.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>

namespace {

using tollwick::kModemTexts;
using tollwick::ModemRecord;
using tollwick::ModemText;

// The speed stands behind make and model; the other columns are in the order of the catalogue.
constexpr std::string_view kSpeedColumn = "max_speed";
constexpr std::size_t kSpeedPosition = 2;
constexpr std::size_t kColumns = std::size(kModemTexts) + 1;
constexpr std::size_t kLeastCells = 4; // up to the initialisation

const ModemText& textOf(std::size_t column) {
    return kModemTexts[column - (column > kSpeedPosition ? 1 : 0)];
}

std::string_view nameOf(std::size_t column) {
    return column == kSpeedPosition ? kSpeedColumn : textOf(column).column;
}

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
        cells.push_back(tollwick::withoutBlanks(line.substr(0, tab)));
        if (tab == std::string_view::npos)
            return cells;
        line.remove_prefix(tab + 1);
    }
}

// How many bytes the text has in the catalogue. Only characters that every Western code page has at
// the same place are taken: ASCII and those from U+00A0 to U+00FF.
std::size_t sizeInCatalogue(std::string_view utf8) {
    std::size_t size = 0;
    for (; !utf8.empty(); ++size) {
        const char32_t character = tollwick::takeCodePoint(utf8);
        if (character < 0x20 || (character >= 0x7F && character < 0xA0) || character > 0xFF)
            throw TableError("has a character that is not Latin-1");
    }
    return size;
}

std::int32_t speedOf(std::string_view cell) {
    std::int32_t speed = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), speed);
    if (error != std::errc{} || end != cell.data() + cell.size() || speed <= 0)
        throw TableError(inQuotes(cell) + " is not a speed");
    return speed;
}

void checkHeading(const std::vector<std::string_view>& cells) {
    std::vector<std::string_view> wanted;
    std::string names;
    for (std::size_t column = 0; column < kColumns; ++column) {
        wanted.push_back(nameOf(column));
        names.append(names.empty() ? "" : ", ").append(nameOf(column));
    }
    if (cells != wanted)
        throw TableError("the first line must name the columns: " + names);
}

ModemRecord modemOf(const std::vector<std::string_view>& cells) {
    if (cells.size() < kLeastCells || cells.size() > kColumns)
        throw TableError("has " + std::to_string(cells.size()) + " cells; " +
                         std::to_string(kLeastCells) + " to " + std::to_string(kColumns) +
                         " are right");
    ModemRecord modem;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        if (column == kSpeedPosition) {
            modem.max_speed = speedOf(cells[column]);
            continue;
        }
        const ModemText& field = textOf(column);
        const std::size_t most =
            field.text == &ModemRecord::init ? tollwick::kHostInitWidth : field.width;
        if (sizeInCatalogue(cells[column]) > most)
            throw TableError(std::string(field.column) + " is longer than " + std::to_string(most) +
                             " bytes: " + inQuotes(cells[column]));
        modem.*field.text = cells[column];
    }
    if (modem.make.empty() || modem.model.empty())
        throw TableError("has no make or no model");
    return modem;
}

std::vector<ModemRecord> readTable(std::istream& table) {
    std::vector<ModemRecord> modems;
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
            ModemRecord modem = modemOf(cellsOf(line));
            if (!known.emplace(modem.make, modem.model).second)
                throw TableError(inQuotes(modem.make + ' ' + modem.model) + " is there already");
            if (!modems.empty() && modem.make < modems.back().make)
                throw TableError(inQuotes(modem.make) + " belongs before " +
                                 inQuotes(modems.back().make));
            modem.record_number = static_cast<tollwick::Long>(modems.size() + 1);
            modems.push_back(std::move(modem));
        } catch (const TableError& error) {
            throw TableError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    if (modems.empty())
        throw TableError("there are no modems in it");
    return modems;
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
        const std::string bytes = tollwick::catalogueBytes(readTable(table));
        file = argv[2];
        if (!tollwick::replaceFile(tollwick::toPath(file), bytes))
            throw std::runtime_error("cannot be written");
    } catch (const std::exception& error) {
        std::cerr << "compile_modems: " << file << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
