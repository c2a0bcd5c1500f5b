#include "rules/transport_watch.h"

namespace tollwick {

bool TransportWatch::hasEnded(const UucpStatusRecord& status) {
    if (status == UucpStatusRecord()) // no answer came in time
        return false;
    if (status.file_number > 0 || !status.file_name.text().empty()) {
        running_ = true;
        quiet_ = 0;
        return false;
    }
    const std::string state = status.state.text();
    quiet_ = state == last_state_ ? quiet_ + 1 : 1;
    last_state_ = state;
    const bool is_quiet = quiet_ >= kQuietStatuses;
    if (is_quiet || (!running_ && idle_state_.empty()))
        idle_state_ = state;
    if (!running_ || (!is_quiet && state != idle_state_))
        return false;
    running_ = false;
    return true;
}

} // namespace tollwick
