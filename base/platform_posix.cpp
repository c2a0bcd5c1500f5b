// Settings in an INI file, errors to syslog, folders by the desktop's base directories.
#include "base/files.h"
#include "base/ini_store.h"
#include "base/platform_folders.h"
#include "base/system_log.h"

#include <cstdlib>
#include <syslog.h>

namespace tollwick {
namespace {

constexpr const char* kSettingsFile = "brask-software/tollwick.ini";

// The value of an environment variable, or `fallback` when it is unset or empty.
std::string environment(const char* name, std::string fallback) {
    const char* value = std::getenv(name);
    return value && *value ? value : std::move(fallback);
}

std::string homeFolder() {
    return environment("HOME", "/");
}

class Syslog : public SystemLog {
public:
    bool error(std::string_view text) override {
        ::syslog(LOG_USER | LOG_ERR, "%.*s", static_cast<int>(text.size()), text.data());
        return true;
    }
};

} // namespace

SettingsFiles settingsFiles() {
    SettingsFiles files;
    files.user = toPath(environment("XDG_CONFIG_HOME", joinPath(homeFolder(), ".config")));
    files.user /= kSettingsFile;
    std::string folders = environment("XDG_CONFIG_DIRS", "/etc/xdg");
    for (std::size_t start = 0; start < folders.size();) {
        const std::size_t end = std::min(folders.find(':', start), folders.size());
        if (end > start)
            files.machine.push_back(toPath(folders.substr(start, end - start)) / kSettingsFile);
        start = end + 1;
    }
    return files;
}

std::string defaultInstallFolder(const std::string&) {
    const std::string data = environment("XDG_DATA_HOME", joinPath(homeFolder(), ".local/share"));
    return joinPath(data, "tollwick");
}

std::unique_ptr<SettingsStore> platformSettingsStore() {
    SettingsFiles files = settingsFiles();
    return std::make_unique<IniStore>(std::move(files.user), std::move(files.machine));
}

std::unique_ptr<SystemLog> platformSystemLog() {
    return std::make_unique<Syslog>();
}

} // namespace tollwick
