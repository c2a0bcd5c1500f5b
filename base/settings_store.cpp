#include "base/settings_store.h"

#include "base/text.h"

namespace tollwick {

std::string Settings::ReadSetting(std::string_view application, std::string_view section,
                                  std::string_view name, std::string_view default_value) {
    std::optional<std::string> value = store_.read(application, section, name);
    if (!value)
        return std::string(default_value);
    value->resize(std::min(value->size(), value->find('\0')));
    if (withoutTrailingBlanks(*value).empty())
        return std::string(default_value);
    return *value;
}

void Settings::WriteSetting(std::string_view application, std::string_view section,
                            std::string_view name, std::string_view value) {
    store_.write(application, section, name, value.empty() ? " " : value);
}

std::string Settings::read(const Setting& setting) {
    return ReadSetting(kSettingsApplication, setting.section, setting.name, setting.default_value);
}

void Settings::write(const Setting& setting, std::string_view value) {
    WriteSetting(kSettingsApplication, setting.section, setting.name, value);
}

} // namespace tollwick
