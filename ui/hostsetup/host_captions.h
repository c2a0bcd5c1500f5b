// The captions of the host dialog, by the names of its controls.
#pragma once

#include "ui/common/console_dialog.h"

#include <span>

namespace tollwick {

std::span<const Caption> hostCaptions();

} // namespace tollwick
