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

    // "CountryCode" into LangBase. Throws RunTimeError 6 beyond 16 bits, and there are no texts
    // then.
    void loadLanguage() {
        texts = StringTable(kNoLanguage);
        texts = StringTable(loadLangBase(settings));
    }
    // The connection settings and the install folder.
    void loadConnectionSettings() {
        connection = tollwick::loadConnectionSettings(settings);
        install_folder =
            connection.InstallDir.empty() ? folders_.default_install : connection.InstallDir;
    }
    // Makes the install folder ready, logs and help included. Throws when the help cannot be.
    void prepareInstallFolder() {
        prepareFolders(install_folder, log_);
        placeSuppliedFiles(folders_.supplied, install_folder, texts.LangBase());
        placeHelpFiles(install_folder);
    }

    Settings settings;
    ConnectionSettings connection;
    StringTable texts{kNoLanguage};
    std::string install_folder; // UTF-8

private:
    static constexpr Integer kNoLanguage = 0;

    LogWriter& log_;
    Folders folders_;
};

} // namespace tollwick
