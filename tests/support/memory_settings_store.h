// Settings in memory. Names are compared without regard to case, as every store does.
#pragma once

#include "base/settings_store.h"

#include <cctype>
#include <map>

namespace tollwick {

class MemorySettingsStore : public SettingsStore {
public:
    std::optional<std::string> read(std::string_view application, std::string_view section,
                                    std::string_view name) override {
        const auto found = values.find(key(application, section, name));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    bool write(std::string_view application, std::string_view section, std::string_view name,
               std::string_view value) override {
        if (writable)
            values[key(application, section, name)] = value;
        return writable;
    }

    // "application\section\name" in lower case, and what is stored there.
    std::map<std::string, std::string> values;
    bool writable = true;

private:
    static std::string key(std::string_view application, std::string_view section,
                           std::string_view name) {
        std::string text(application);
        text.append("\\").append(section).append("\\").append(name);
        for (char& c : text)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return text;
    }
};

} // namespace tollwick
