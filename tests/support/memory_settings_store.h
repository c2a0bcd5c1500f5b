// Settings in memory. Names are compared without regard to case, as every store does.
#pragma once

#include "app/settings_store.h"

#include <algorithm>
#include <map>

namespace tollwick {

class MemorySettingsStore : public SettingsStore {
public:
    std::optional<std::string> read(std::string_view application, std::string_view section,
                                    std::string_view name) override {
        const auto found = values.find(key(application, section, name));
        if (found == values.end())
            return {};
        return found->second;
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
        std::transform(text.begin(), text.end(), text.begin(), [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        });
        return text;
    }
};

} // namespace tollwick
