// The speeds of the last minutes, for the monitor's graph.
#pragma once

#include <cstddef>
#include <deque>

namespace tollwick {

class SpeedHistory {
public:
    static constexpr double kSpan = 300;             // seconds that are kept
    static constexpr std::size_t kMaxSamples = 1000; // far more than come in that time

    struct Sample {
        double at;    // seconds since any fixed moment
        double speed; // bits per second, not negative
    };

    // `at` never goes back.
    void add(double at, double speed) {
        samples_.push_back({at, speed > 0 ? speed : 0});
        while (samples_.front().at < at - kSpan || samples_.size() > kMaxSamples)
            samples_.pop_front();
    }
    [[nodiscard]] const std::deque<Sample>& samples() const { return samples_; }
    [[nodiscard]] double highest() const {
        double highest = 0;
        for (const Sample& sample : samples_)
            highest = sample.speed > highest ? sample.speed : highest;
        return highest;
    }

private:
    std::deque<Sample> samples_;
};

} // namespace tollwick
