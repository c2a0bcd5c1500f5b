// What keeps a site from being restored.
#pragma once

#include "base/string_table.h"
#include "site/site.h"

#include <optional>
#include <string>

namespace tollwick::ctl {

// What is wrong, with its place, in the language of the texts; nothing when all is well.

// Names that stand there twice, and what does not fit a record: such a site cannot be compared.
std::optional<std::string> siteProblem(const Site& site, const StringTable& texts);
// What the dialogs would refuse of its hosts and schedules.
std::optional<std::string> rulesProblem(const Site& site, const StringTable& texts);
// What the editors would refuse of the settings that are not as they are now.
std::optional<std::string> settingsProblem(const SettingsRecord& settings,
                                           const SettingsRecord& present, const StringTable& texts);

} // namespace tollwick::ctl
