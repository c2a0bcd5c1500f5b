// What long work shows while it runs.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tollwick {

// Steps that are done: entries of a list that have come, rows that have been removed.
struct WorkCount {
    std::size_t done = 0;
    std::optional<std::size_t>
        of; // where it is known; such a work can be stopped between two steps
    bool operator==(const WorkCount&) const = default;
};

class Progress {
public:
    virtual ~Progress() = default;

    // The text of the status-bar panel "info"; UTF-8.
    virtual void setInfo(std::string_view text) = 0;
    // The hourglass pointer; calls with true and false come in pairs and may nest.
    virtual void setBusy(bool busy) = 0;
    // How far a longer work has come; nothing when it is over. Called for every step.
    virtual void setCount(std::optional<WorkCount> count) = 0;
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
