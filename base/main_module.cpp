#include "base/main_module.h"

#include "base/files.h"
#include "base/numeric.h"

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

void MainModule::loadLanguage() {
    texts_ = StringTable(toInteger(numericValue(settings.read(setting::CountryCode))));
}

void MainModule::loadConnectionSettings() {
    stored_install_folder_ = settings.read(setting::InstallDir);
    install_folder_ =
        stored_install_folder_.empty() ? folders_.default_install : stored_install_folder_;
    connection.ComTimeout = static_cast<Single>(numericValue(settings.read(setting::ComTimeout)));
    connection.ServerConnectIp = settings.read(setting::ServerConnectIp);
    connection.ServerConnectPort = settings.read(setting::ServerConnectPort);
    connection.ServerConnectUsername = settings.read(setting::ServerConnectUsername);
    connection.no_server_address = connection.ServerConnectIp.empty();
}

void MainModule::saveConnectionSettings() {
    settings.write(setting::InstallDir, stored_install_folder_);
    settings.write(setting::ServerConnectIp, connection.ServerConnectIp);
    settings.write(setting::ServerConnectPort, connection.ServerConnectPort);
    settings.write(setting::ServerConnectUsername, connection.ServerConnectUsername);
}

std::string MainModule::inInstallFolder(std::string_view name) const {
    return joinPath(install_folder_, name);
}

void MainModule::prepareFolders() {
    log_.setFolder(inInstallFolder(kLogsFolder));
    std::vector<FolderCreation> creations = createMissingFolders(install_folder_);
    for (FolderCreation& creation : createMissingFolders(log_.folder()))
        creations.push_back(std::move(creation));
    // Only now there is a folder to log into.
    for (const FolderCreation& creation : creations)
        logCreation(creation, log_);
}

void MainModule::copySuppliedFiles() {
    if (folders_.supplied.empty())
        return;
    const auto copyIfMissing = [&](std::string_view name) {
        const std::filesystem::path to = toPath(inInstallFolder(name));
        std::error_code error;
        if (!std::filesystem::exists(to, error))
            copyWhole(toPath(joinPath(folders_.supplied, name)), to);
    };
    for (const std::string_view name : kSuppliedFiles)
        copyIfMissing(name);
    for (const Renaming& help : kHelpFiles)
        if (isHelpOf(help.from, texts_.LangBase()))
            copyIfMissing(help.from);
}

void MainModule::placeHelpFiles() {
    for (const Renaming& help : kHelpFiles) {
        const std::filesystem::path from = toPath(inInstallFolder(help.from));
        const std::filesystem::path to = toPath(inInstallFolder(help.to));
        std::error_code error;
        if (!std::filesystem::exists(from, error))
            continue;
        std::filesystem::remove(to);
        std::filesystem::rename(from, to);
    }
}

std::vector<FolderCreation> createMissingFolders(const std::string& path) {
    std::vector<FolderCreation> creations;
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
    return creations;
}

} // namespace tollwick
