// What the nodes that group others list: the root an overview of the service, the others a line for
// each of their children. Each row's key is that of the node it tells about.
#pragma once

#include "rules/list_contents.h"

namespace tollwick {

std::vector<ListRow> overviewRows(std::string_view node_key, const ServiceData& data,
                                  const StringTable& texts, const Surroundings& around);

} // namespace tollwick
