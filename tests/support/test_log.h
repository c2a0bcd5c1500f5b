// A log writer with a clock that stands still until the test sets it and a system log that is kept.
#pragma once

#include "base/clock.h"
#include "base/log_writer.h"
#include "base/system_log.h"

#include <string>
#include <vector>

namespace tollwick {

struct FixedClock : Clock {
    [[nodiscard]] LocalTime now() const override { return time; }
    LocalTime time{1999, 3, 7, 4, 5, 6, 7};
};

struct RecordingSystemLog : SystemLog {
    bool error(std::string_view text) override {
        entries.emplace_back(text);
        return true;
    }
    std::vector<std::string> entries;
};

struct TestLog {
    RecordingSystemLog system;
    FixedClock clock;
    LogWriter writer{system, clock};
};

} // namespace tollwick
