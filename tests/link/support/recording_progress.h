// Keeps what long work has shown.
#pragma once

#include "app/progress.h"

#include <string>
#include <vector>

namespace tollwick {

class RecordingProgress : public Progress {
public:
    void setInfo(std::string_view text) override { infos.emplace_back(text); }
    void setBusy(bool busy) override { busy_depth += busy ? 1 : -1; }
    void setFetched(std::optional<std::size_t> entries) override { fetched.push_back(entries); }

    std::vector<std::string> infos;
    int busy_depth = 0;
    std::vector<std::optional<std::size_t>> fetched;
};

} // namespace tollwick
