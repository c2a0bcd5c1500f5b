// A clock that runs from the time of day that the test sets, so that no test depends on when it is
// run.
#pragma once

#include "app/clock.h"

#include <chrono>

namespace tollwick {

class RunningClock : public Clock {
public:
    void set(int hour, int minute, int second) {
        set_to_ = std::chrono::seconds(hour * 3600 + minute * 60 + second);
        set_at_ = std::chrono::steady_clock::now();
    }

    [[nodiscard]] LocalTime now() const override {
        using namespace std::chrono;
        const auto time = set_to_ + duration_cast<milliseconds>(steady_clock::now() - set_at_);
        const int hundredths = static_cast<int>(time.count() / 10 % (24 * 360'000));
        return {1999,
                3,
                7,
                hundredths / 360'000,
                hundredths / 6'000 % 60,
                hundredths / 100 % 60,
                hundredths % 100};
    }

private:
    std::chrono::milliseconds set_to_ = std::chrono::hours(12);
    std::chrono::steady_clock::time_point set_at_ = std::chrono::steady_clock::now();
};

} // namespace tollwick
