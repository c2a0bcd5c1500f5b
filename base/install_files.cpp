#include "base/install_files.h"

#include "base/error_handler.h"
#include "base/files.h"
#include "base/string_table.h"

#include <vector>

namespace tollwick {
namespace {

constexpr std::string_view kLogsFolder = "Logs";

// The catalogue and the note keep their names; of the help files only the pair of the active
// language is wanted.
constexpr std::string_view kSuppliedFiles[] = {"MODEMS.DAT", "note.txt"};

struct Renaming {
    std::string_view from;
    std::string_view to;
};

// In this order, so that the English files win when both languages are there.
constexpr Renaming kHelpFiles[] = {{"Tollw-se.hlp", "Tollwick.hlp"},
                                   {"Tollw-us.hlp", "Tollwick.hlp"},
                                   {"Tollw-se.cnt", "Tollwick.cnt"},
                                   {"Tollw-us.cnt", "Tollwick.cnt"}};

bool isHelpOf(std::string_view name, Integer lang_base) {
    return name.starts_with(lang_base == kSwedish ? "Tollw-se" : "Tollw-us");
}

// Copies a file whole or not at all. What cannot be copied is done without: neither an unwritable
// folder nor a full disk may stop the console.
void copyWhole(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::filesystem::path copy = to;
    copy += ".new";
    std::error_code error;
    std::filesystem::copy_file(from, copy, std::filesystem::copy_options::overwrite_existing,
                               error);
    if (!error)
        std::filesystem::rename(copy, to, error);
    if (error)
        std::filesystem::remove(copy, error);
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

void copySuppliedFiles(std::string_view supplied, std::string_view install_folder,
                       Integer lang_base) {
    if (supplied.empty())
        return;
    const auto copyIfMissing = [&](std::string_view name) {
        const std::filesystem::path to = toPath(joinPath(install_folder, name));
        std::error_code error;
        if (!std::filesystem::exists(to, error))
            copyWhole(toPath(joinPath(supplied, name)), to);
    };
    for (const std::string_view name : kSuppliedFiles)
        copyIfMissing(name);
    for (const Renaming& help : kHelpFiles)
        if (isHelpOf(help.from, lang_base))
            copyIfMissing(help.from);
}

void placeHelpFiles(std::string_view install_folder) {
    for (const Renaming& help : kHelpFiles) {
        const std::filesystem::path from = toPath(joinPath(install_folder, help.from));
        const std::filesystem::path to = toPath(joinPath(install_folder, help.to));
        std::error_code error;
        if (!std::filesystem::exists(from, error))
            continue;
        std::filesystem::remove(to);
        std::filesystem::rename(from, to);
    }
}

} // namespace tollwick
