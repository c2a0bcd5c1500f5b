// Settings in the registry, errors to the event log, files beside the program.
#include "base/ansi.h"
#include "base/platform_folders.h"
#include "base/registry_store.h"
#include "base/system_log.h"

#include <utility>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tollwick {
namespace {

constexpr const char* kParentKey = "SOFTWARE\\Brask software";
constexpr const char* kEventSource = "Tollwick";

class RegistryKey {
public:
    // Opens the key, which is created when missing. A leading "\" of the subkey is dropped, an
    // empty subkey opens the parent itself, an empty parent opens nothing.
    RegistryKey(std::string parent, std::string subkey) {
        if (parent.empty())
            return;
        if (subkey.starts_with('\\'))
            subkey.erase(0, 1);
        path_ = std::move(parent);
        if (!subkey.empty())
            path_ += '\\' + subkey;
        if (RegCreateKeyA(HKEY_LOCAL_MACHINE, path_.c_str(), &key_) != ERROR_SUCCESS)
            key_ = nullptr;
    }
    ~RegistryKey() {
        if (key_)
            RegCloseKey(key_);
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    // Only a value of type REG_SZ is read. What is not there is looked for where 32-bit programs of
    // the product keep it; it is never written there.
    // A user who may not make the 64-bit key reads it, too.
    [[nodiscard]] std::optional<std::string> queryString(const std::string& name) const {
        if (key_ && RegQueryValueExA(key_, name.c_str(), nullptr, nullptr, nullptr, nullptr) !=
                        ERROR_FILE_NOT_FOUND)
            return queryString(key_, name);
        HKEY key = nullptr;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path_.c_str(), 0, KEY_READ | KEY_WOW64_32KEY, &key) !=
            ERROR_SUCCESS)
            return {};
        std::optional<std::string> text = queryString(key, name);
        RegCloseKey(key);
        return text;
    }

    [[nodiscard]] bool setString(const std::string& name, const std::string& text) const {
        return key_ && RegSetValueExA(key_, name.c_str(), 0, REG_SZ,
                                      reinterpret_cast<const BYTE*>(text.c_str()),
                                      static_cast<DWORD>(text.size() + 1)) == ERROR_SUCCESS;
    }

private:
    static std::optional<std::string> queryString(HKEY key, const std::string& name) {
        DWORD type = 0;
        DWORD size = 0;
        if (RegQueryValueExA(key, name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
            type != REG_SZ)
            return {};
        std::string text(size, ' ');
        if (RegQueryValueExA(key, name.c_str(), nullptr, &type,
                             reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS ||
            type != REG_SZ)
            return {};
        text.resize(std::min(text.size(), text.find('\0')));
        return text;
    }

    std::string path_;
    HKEY key_ = nullptr;
};

std::string subkeyOf(std::string_view application, std::string_view section) {
    return toAnsi(std::string(application).append("\\").append(section));
}

class EventLog : public SystemLog {
public:
    bool error(std::string_view text) override {
        const HANDLE source = RegisterEventSourceA(nullptr, kEventSource);
        if (!source)
            return false;
        const std::string ansi = toAnsi(text);
        const char* strings[] = {ansi.c_str()};
        const bool written =
            ReportEventA(source, EVENTLOG_ERROR_TYPE, 0, 0, nullptr, 1, 0, strings, nullptr) != 0;
        DeregisterEventSource(source);
        return written;
    }
};

} // namespace

std::optional<std::string> RegistryStore::read(std::string_view application,
                                               std::string_view section, std::string_view name) {
    const RegistryKey key(kParentKey, subkeyOf(application, section));
    const std::optional<std::string> ansi = key.queryString(toAnsi(name));
    if (!ansi)
        return {};
    return fromAnsi(*ansi);
}

bool RegistryStore::write(std::string_view application, std::string_view section,
                          std::string_view name, std::string_view value) {
    const RegistryKey key(kParentKey, subkeyOf(application, section));
    return key.setString(toAnsi(name), toAnsi(value));
}

std::string defaultInstallFolder(const std::string& program_folder) {
    return program_folder;
}

std::unique_ptr<SettingsStore> platformSettingsStore() {
    return std::make_unique<RegistryStore>();
}

std::unique_ptr<SystemLog> platformSystemLog() {
    return std::make_unique<EventLog>();
}

} // namespace tollwick
