// The numbers of the wire and the logs, by the names that the protocol gives them.
#pragma once

#include <cstdint>

namespace tollwick {

using Integer = std::int16_t;
using Long = std::int32_t;
using Single = float;

// Yes/no values are Integers.
inline constexpr Integer kTrue = -1;
inline constexpr Integer kFalse = 0;

} // namespace tollwick
