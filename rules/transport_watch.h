// Tells from the statuses, as they come in one after the other, when a transport has ended.
#pragma once

#include "wire/records.h"

#include <string>

namespace tollwick {

class TransportWatch {
public:
    // Between two hosts no file is in transfer either; a pause of this many statuses is the end.
    static constexpr int kQuietStatuses = 10;

    // True once for each transport: at its end.
    bool hasEnded(const UucpStatusRecord& status);
    void reset() { *this = TransportWatch(); }

private:
    std::string idle_state_; // what the service says when it transports nothing, once that is known
    std::string last_state_;
    bool running_ = false; // a file has been in transfer since the last end
    int quiet_ = 0;        // statuses without a file, one after the other
};

} // namespace tollwick
