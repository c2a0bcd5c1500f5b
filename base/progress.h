// What long work shows while it runs.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tollwick {

class Progress {
public:
    virtual ~Progress() = default;

    // The text of the status-bar panel "info"; UTF-8.
    virtual void setInfo(std::string_view text) = 0;
    // The hourglass pointer; calls with true and false come in pairs and may nest.
    virtual void setBusy(bool busy) = 0;
    // How many entries of the list that is being fetched have come; nothing when none is being
    // fetched. Called for every entry.
    virtual void setFetched(std::optional<std::size_t> entries) = 0;
};

// Shows the hourglass for a scope.
class BusyPointer {
public:
    explicit BusyPointer(Progress& progress) : progress_(progress) { progress_.setBusy(true); }
    ~BusyPointer() { progress_.setBusy(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    Progress& progress_;
};

} // namespace tollwick
