// What keeps a site from being restored.
#pragma once

#include "base/string_table.h"
#include "site/site.h"

#include <optional>
#include <string>

namespace tollwick::ctl {

// The first thing in the site that a service could not take as it stands, with its place, in the
// language of the texts. Nothing when there is none.
std::optional<std::string> siteProblem(const Site& site, const StringTable& texts);

} // namespace tollwick::ctl
