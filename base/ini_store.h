// Settings in a UTF-8 INI file of the user, laid over machine-wide ones:
//
//   [Tollwick\General]
//   ServerConnectIp=192.168.1.2
#pragma once

#include "base/settings_store.h"

#include <filesystem>
#include <vector>

namespace tollwick {

class IniStore : public SettingsStore {
public:
    // `machine_files` are asked in their order for what `user_file` does not hold, or holds blank.
    IniStore(std::filesystem::path user_file, std::vector<std::filesystem::path> machine_files);

    std::optional<std::string> read(std::string_view application, std::string_view section,
                                    std::string_view name) override;
    // Writes the whole file to a temporary one, flushes it and renames it over the old one; lines
    // that are not understood are kept. A file that is there but cannot be read is left alone.
    bool write(std::string_view application, std::string_view section, std::string_view name,
               std::string_view value) override;

private:
    std::filesystem::path user_file_;
    std::vector<std::filesystem::path> machine_files_;
};

} // namespace tollwick
