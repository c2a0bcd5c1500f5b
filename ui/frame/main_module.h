// What the whole program shares for its run, and the steps of start-up that need no window.
#pragma once

#include "base/connection_settings.h"
#include "base/install_files.h"
#include "base/string_table.h"

namespace tollwick {

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
    void loadLanguage() { texts = StringTable(loadLangBase(settings)); }
    // The language that windows are designed in, in place of one without texts. It holds until the
    // language is loaded again.
    void useDesignLanguage() { texts = StringTable(kEnglish); }
    // The connection settings and the install folder.
    void loadConnectionSettings() {
        connection = tollwick::loadConnectionSettings(settings);
        install_folder =
            connection.InstallDir.empty() ? folders_.default_install : connection.InstallDir;
    }
    // Makes the install folder ready, logs and help included. Throws when the help cannot be.
    void prepareInstallFolder() {
        prepareFolders(install_folder, log_);
        copySuppliedFiles(folders_.supplied, install_folder, texts.LangBase());
        placeHelpFiles(install_folder);
    }

    Settings settings;
    ConnectionSettings connection;
    StringTable texts{kEnglish};
    std::string install_folder; // UTF-8

private:
    LogWriter& log_;
    Folders folders_;
};

} // namespace tollwick
