// A system log that keeps its entries for the test.
#pragma once

#include "app/system_log.h"

#include <string>
#include <vector>

namespace tollwick {

class RecordingSystemLog : public SystemLog {
public:
    void error(std::string_view text) override { entries.emplace_back(text); }

    std::vector<std::string> entries;
};

} // namespace tollwick
