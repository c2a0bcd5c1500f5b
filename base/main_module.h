// What the whole program shares for its run, and the steps of start-up that need no window.
#pragma once

#include "base/error_handler.h"
#include "base/settings_store.h"
#include "base/string_table.h"

#include <string>
#include <string_view>
#include <vector>

namespace tollwick {

inline constexpr char kNul = '\0';
inline constexpr char kTab = '\t';
// Kept for letters that leave the system; no window shows it.
inline constexpr std::string_view kRoutingText = "Routed through Corvale Tollwick admin V1.3";

// Where the service is and who logs in; UTF-8.
struct ConnectionSettings {
    std::string ServerConnectIp;
    std::string ServerConnectPort; // decimal text
    std::string ServerConnectUsername;
    Single ComTimeout = 30; // seconds to wait for a reply
    bool no_server_address = false;
};

// Where the files of the program lie; UTF-8.
struct Folders {
    std::string supplied; // what came with the program: catalogue, note, help of every language
    std::string default_install; // used when the setting "InstallDir" reads blank
};

class MainModule {
public:
    MainModule(SettingsStore& store, LogWriter& log, Folders folders)
        : settings(store), log_(log), folders_(std::move(folders)) {}

    // "CountryCode" into LangBase.
    void loadLanguage();
    // The language that windows are designed in, in place of one without texts. It holds until the
    // language is loaded again.
    void useDesignLanguage() { texts_ = StringTable(kEnglish); }
    // The connection settings and the install folder.
    void loadConnectionSettings();
    void saveConnectionSettings();
    // Sets the log folder, and creates and logs what is missing of it.
    void prepareFolders();
    // Puts what came with the program into the install folder where it is missing there.
    void copySuppliedFiles();
    // Gives the help files of the installed language their common names. Throws when one cannot be
    // renamed.
    void placeHelpFiles();

    [[nodiscard]] LogWriter& log() const { return log_; }
    [[nodiscard]] const StringTable& texts() const { return texts_; }
    [[nodiscard]] const std::string& installFolder() const { return install_folder_; }
    [[nodiscard]] std::string inInstallFolder(std::string_view name) const;

    Settings settings;
    ConnectionSettings connection;

private:
    LogWriter& log_;
    Folders folders_;
    StringTable texts_{kEnglish};
    std::string install_folder_;
    std::string stored_install_folder_; // what the setting holds: a default is not written back
};

struct FolderCreation {
    std::string path; // UTF-8
    bool succeeded = false;
};

// Creates each missing folder of the path, from the drive downwards.
std::vector<FolderCreation> createMissingFolders(const std::string& path);

} // namespace tollwick
