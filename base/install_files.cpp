#include "base/install_files.h"

#include "base/error_handler.h"
#include "base/files.h"
#include "base/string_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <map>
#include <span>
#include <sstream>
#include <thread>
#include <vector>

namespace tollwick {
namespace {

constexpr std::string_view kLogsFolder = "Logs";

// Which files this program has placed in the install folder, a line each: the name, a blank, and
// the fingerprint of what was placed.
constexpr std::string_view kPlacedList = "Supplied.lst";
// In bytes; nothing that comes with the program is nearly as large.
constexpr std::size_t kMaxSize = 1 << 24;

struct SuppliedFile {
    std::string_view name;     // as it is supplied
    std::string_view to;       // its name in the install folder
    std::string_view beside{}; // the name that it is given beside a site's own, if any
};
constexpr SuppliedFile kCommonFiles[] = {{"MODEMS.DAT", "MODEMS.DAT", "MODEMS.NEW"},
                                         {"note.txt", "note.txt"}};
constexpr SuppliedFile kEnglishHelp[] = {{"Tollw-us.hlp", "Tollwick.hlp"},
                                         {"Tollw-us.cnt", "Tollwick.cnt"}};
constexpr SuppliedFile kSwedishHelp[] = {{"Tollw-se.hlp", "Tollwick.hlp"},
                                         {"Tollw-se.cnt", "Tollwick.cnt"}};

// FNV-1a, 64 bits, in hexadecimal digits.
std::string fingerprint(std::string_view bytes) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), hash, 16).ptr;
    return {digits.begin(), end};
}

// What was placed before there was a list.
constexpr std::string_view kPlacedBefore[] = {"745af856c9422629", "52ccd6fec02052ba",
                                              "6440858bc7cfa1bc", "21cd316d738088c1",
                                              "ac79ffd1e9bc006",  "74470eeb64b06097"};

using Placed = std::map<std::string, std::string, std::less<>>;

Placed readPlaced(const std::string& list) {
    Placed placed;
    std::istringstream lines(readWholeFile(toPath(list), kMaxSize).value_or(""));
    for (std::string name, print; lines >> name >> print;)
        placed[name] = print;
    return placed;
}

void writePlaced(const std::string& list, const Placed& placed) {
    std::string lines;
    for (const auto& [name, print] : placed)
        lines.append(name).append(1, ' ').append(print).append(1, '\n');
    replaceFile(toPath(list), lines);
}

// Places a file, unless a site's own stands there. What cannot be placed is done without: neither
// an unwritable folder nor a full disk may stop the console.
void place(const SuppliedFile& file, std::string_view supplied, std::string_view install_folder,
           Placed& placed) {
    const auto bytes = readWholeFile(toPath(joinPath(supplied, file.name)), kMaxSize);
    if (!bytes)
        return;
    const std::filesystem::path to = toPath(joinPath(install_folder, file.to));
    const std::string print = fingerprint(*bytes);
    std::string& last = placed[std::string(file.to)];
    std::error_code error;
    bool is_placed = false;
    if (std::filesystem::exists(to, error)) {
        const std::string present = readWholeFile(to, kMaxSize).value_or("");
        const std::string present_print = fingerprint(present);
        const bool is_untouched =
            present_print == last ||
            std::ranges::find(kPlacedBefore, present_print) != std::end(kPlacedBefore);
        if (present == *bytes)
            is_placed = true;
        else if (is_untouched)
            is_placed = replaceFile(to, *bytes);
        else if (!file.beside.empty() && print != last)
            is_placed = replaceFile(toPath(joinPath(install_folder, file.beside)), *bytes);
    } else {
        is_placed = replaceFile(to, *bytes);
    }
    if (is_placed)
        last = print;
}

struct FolderCreation {
    std::string path; // UTF-8
    bool succeeded = false;
};

// Creates each missing folder of the path, from the drive downwards.
void createMissingFolders(std::string_view path, std::vector<FolderCreation>& creations) {
    const std::filesystem::path whole = toPath(path);
    // Only what follows the drive letter is walked.
    std::filesystem::path folder = whole.root_path();
    for (const std::filesystem::path& part : whole.relative_path()) {
        folder /= part;
        std::error_code error;
        if (part.empty() || std::filesystem::is_directory(folder, error))
            continue;
        const bool created = std::filesystem::create_directory(folder, error);
        creations.push_back({fromPath(folder), created && !error});
    }
}

void logCreation(const FolderCreation& creation, LogWriter& log) {
    const auto write = [&](const std::string& message, std::string_view advice) {
        log.LogWrite(message, advice, 0, static_cast<Integer>(Routine::FolderCheck), 0);
    };
    if (creation.succeeded)
        write("Directory: " + creation.path + " was missing and has been recreated",
              "No action required unless this message is coming repeatedly.");
    else
        write("Creation of directory: " + creation.path + " failed!!!",
              "Check directory structure and diskspace, call support if permanent error.");
}

} // namespace

void prepareFolders(std::string_view install_folder, LogWriter& log) {
    log.setFolder(joinPath(install_folder, kLogsFolder));
    std::vector<FolderCreation> creations;
    createMissingFolders(install_folder, creations);
    createMissingFolders(log.folder(), creations);
    // Only now there is a folder to log into.
    for (const FolderCreation& creation : creations)
        logCreation(creation, log);
}

void placeSuppliedFiles(std::string_view supplied, std::string_view install_folder,
                        Integer lang_base) {
    if (supplied.empty())
        return;
    const std::string list = joinPath(install_folder, kPlacedList);
    const Placed before = readPlaced(list);
    Placed placed = before;
    for (const auto& files :
         {std::span(kCommonFiles), std::span(lang_base == kSwedish ? kSwedishHelp : kEnglishHelp)})
        for (const SuppliedFile& file : files)
            place(file, supplied, install_folder, placed);
    std::erase_if(placed, [](const auto& entry) { return entry.second.empty(); });
    if (placed != before)
        writePlaced(list, placed);
}

void placeHelpFiles(std::string_view install_folder) {
    // In this order, so that the English files win when both languages are there.
    for (const std::size_t kind : {0, 1})
        for (const SuppliedFile& help : {kSwedishHelp[kind], kEnglishHelp[kind]}) {
            std::error_code error;
            const std::filesystem::path from = toPath(joinPath(install_folder, help.name));
            const std::filesystem::path to = toPath(joinPath(install_folder, help.to));
            // Another console that starts may be moving the file: that is refused for a moment, and
            // then the file is gone.
            for (int attempts = 10; attempts >= 0 && std::filesystem::exists(from, error);
                 --attempts) {
                std::filesystem::rename(from, to, error);
                if (error && attempts == 0)
                    throw std::filesystem::filesystem_error("help", from, to, error);
                if (error)
                    std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
        }
}

} // namespace tollwick
