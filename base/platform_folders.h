// Folders that depend on the platform and the user.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tollwick {

// The user's settings file and the machine-wide ones it is laid over. Not used on Windows.
struct SettingsFiles {
    std::filesystem::path user;
    std::vector<std::filesystem::path> machine;
};
SettingsFiles settingsFiles();

// The install folder (UTF-8) when the setting "InstallDir" reads blank. `program_folder` is the
// folder of the executable.
std::string defaultInstallFolder(const std::string& program_folder);

} // namespace tollwick
