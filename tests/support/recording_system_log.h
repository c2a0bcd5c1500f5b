// A system log that keeps its entries for the test.
#pragma once

#include "app/system_log.h"

#include <string>
#include <vector>

namespace tollwick {

class RecordingSystemLog : public SystemLog {
public:
    bool error(std::string_view text) override {
        entries.emplace_back(text);
        return true;
    }

    std::vector<std::string> entries;
};

} // namespace tollwick
