// What a request does from its first moment to its last; included by what implements Requests.
#pragma once

#include "link/requests.h"

#include <utility>

namespace tollwick {

// Counts a request as running, its failure box included.
class Requests::Scope {
public:
    explicit Scope(Requests& requests) : depth_(requests.depth_) { ++depth_; }
    ~Scope() { --depth_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    int& depth_;
};

// The same for a request that is waited for: input is locked and the hourglass is up from its first
// moment to its last.
class Requests::Waiting {
public:
    explicit Waiting(Requests& requests)
        : requests_(requests), scope_(requests), busy_(requests.progress_),
          locked_(requests.link_.inputLock()) {}
    ~Waiting() {
        if (requests_.depth_ == 1 && std::exchange(requests_.is_status_shown_, false))
            requests_.showIdle();
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    Requests& requests_;
    Scope scope_;
    BusyPointer busy_;
    LockedInput locked_;
};

} // namespace tollwick
