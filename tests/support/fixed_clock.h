// A clock that stands still until the test sets it.
#pragma once

#include "app/clock.h"

namespace tollwick {

class FixedClock : public Clock {
public:
    [[nodiscard]] LocalTime now() const override { return time; }

    LocalTime time{1999, 3, 7, 4, 5, 6, 7};
};

} // namespace tollwick
