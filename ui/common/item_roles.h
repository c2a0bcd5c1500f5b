// The item data of tree nodes and list rows, by which automation knows them.
#pragma once

#include <Qt>

namespace tollwick {

inline constexpr int kKeyRole = Qt::UserRole;
inline constexpr int kImageRole = Qt::UserRole + 1;

} // namespace tollwick
