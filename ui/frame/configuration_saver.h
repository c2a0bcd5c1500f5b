// Saves the configuration of the service in a file, as a backup or to be rehearsed on.
#pragma once

#include "ui/common/console_context.h"

class QWidget;

namespace tollwick {

// Asks for a file, fetches what the service holds and writes settings, schedules, hosts and scripts
// into it. Everything but a cancel is told to the user.
void saveConfiguration(ConsoleContext& context, QWidget* window);

} // namespace tollwick
