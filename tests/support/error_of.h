#pragma once

#include "base/run_time_error.h"

namespace tollwick {

// The number of the run-time error that `call` ends in, 0 when it ends without one.
template <class Call>
int errorOf(Call&& call) {
    try {
        static_cast<void>(call());
        return 0;
    } catch (const RunTimeError& error) {
        return error.number();
    }
}

} // namespace tollwick
