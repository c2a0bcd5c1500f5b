// Settings in the Windows registry, as strings below HKEY_LOCAL_MACHINE\SOFTWARE\Brask software:
// read from the 64-bit view and, where that lacks a value, from the 32-bit one; written to the
// former.
#pragma once

#include "base/settings_store.h"

namespace tollwick {

class RegistryStore : public SettingsStore {
public:
    std::optional<std::string> read(std::string_view application, std::string_view section,
                                    std::string_view name) override;
    bool write(std::string_view application, std::string_view section, std::string_view name,
               std::string_view value) override;
};

} // namespace tollwick
