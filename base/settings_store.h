// The console's local settings: strings, addressed by application, section and name. One
// implementation per platform: the registry on Windows, an INI file elsewhere.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tollwick {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    // The stored text (UTF-8), or nothing when it is absent, of another type or cannot be read.
    // Sections and names are compared without regard to case.
    virtual std::optional<std::string> read(std::string_view application, std::string_view section,
                                            std::string_view name) = 0;
    // False when the text could not be stored; nothing is half-written then.
    virtual bool write(std::string_view application, std::string_view section,
                       std::string_view name, std::string_view value) = 0;
};

// The store of this platform.
std::unique_ptr<SettingsStore> platformSettingsStore();

inline constexpr std::string_view kSettingsApplication = "Tollwick";

// One setting: where it stands and what it reads as when absent or blank.
struct Setting {
    std::string_view section;
    std::string_view name;
    std::string_view default_value;
};

namespace setting {
inline constexpr Setting CountryCode{"General", "CountryCode", "1000"};
inline constexpr Setting ComTimeout{"General", "ComTimeout", "30"}; // seconds
inline constexpr Setting ServerConnectIp{"General", "ServerConnectIp", "127.0.0.1"};
inline constexpr Setting ServerConnectPort{"General", "ServerConnectPort", "542"};
inline constexpr Setting ServerConnectUsername{"General", "ServerConnectUsername", "admin"};
inline constexpr Setting InstallDir{"Application", "InstallDir", ""};
// One value under two spellings: names are compared without regard to case.
inline constexpr Setting WindowStateWritten{"Environment", "Windowstate", "0"};
inline constexpr Setting WindowStateRead{"Environment", "WindowState", "0"};
// Twips.
inline constexpr Setting WindowXpos{"Environment", "WindowXpos", "0"};
inline constexpr Setting WindowYpos{"Environment", "WindowYpos", "0"};
inline constexpr Setting WindowXsize{"Environment", "WindowXsize", "7440"};
inline constexpr Setting WindowYsize{"Environment", "WindowYsize", "5235"};
inline constexpr Setting SplitterPos{"Environment", "SplitterPos", "2985"};
} // namespace setting

// Reads and writes settings with the rules for blanks: a value of blanks and NULs alone reads as
// the default, an empty value is stored as one blank.
class Settings {
public:
    explicit Settings(SettingsStore& store) : store_(store) {}

    std::string ReadSetting(std::string_view application, std::string_view section,
                            std::string_view name, std::string_view default_value);
    void WriteSetting(std::string_view application, std::string_view section, std::string_view name,
                      std::string_view value);

    std::string read(const Setting& setting);
    void write(const Setting& setting, std::string_view value);

private:
    SettingsStore& store_;
};

} // namespace tollwick
