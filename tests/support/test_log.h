// A log writer with a clock that stands still and a system log that is kept.
#pragma once

#include "app/log_writer.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/recording_system_log.h"

namespace tollwick {

struct TestLog {
    RecordingSystemLog system;
    FixedClock clock;
    LogWriter writer{system, clock};
};

} // namespace tollwick
