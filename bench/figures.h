// What is measured, and how it is told: one line with tabs for each figure, of which scripts/bench
// makes a table.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace tollwick::bench {

// What `tollwick-bench NAME` can measure.
struct Measurement {
    Measurement(const char* name, void (*measure)()) { all()[name] = measure; }
    static std::map<std::string, void (*)()>& all() {
        static std::map<std::string, void (*)()> measurements;
        return measurements;
    }
};

// What could not be measured ends the program.
inline void require(bool condition, const char* otherwise) {
    if (!condition)
        throw std::runtime_error(otherwise);
}

using Clock = std::chrono::steady_clock;

inline double milliseconds(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}
inline double timeOf(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return milliseconds(start);
}

inline double median(std::vector<double> values) { // of an odd number
    require(!values.empty(), "there are no values");
    std::ranges::sort(values);
    return values[values.size() / 2];
}

// Ours and the floor of one repetition stand at the same place.
struct Pairs {
    std::vector<double> ours, floor;

    void add(double our, double its_floor) {
        ours.push_back(our);
        floor.push_back(its_floor);
    }
    // The median of the ratios: what slows a whole repetition down does not count.
    [[nodiscard]] double ratio() const {
        std::vector<double> ratios;
        std::ranges::transform(ours, floor, std::back_inserter(ratios), std::divides());
        return median(ratios);
    }
};

// Measures both in turn, after one turn that does not count.
inline Pairs inTurn(int repetitions, const std::function<double()>& ours,
                    const std::function<double()>& floor) {
    ours(), floor();
    Pairs pairs;
    for (int i = 0; i < repetitions; ++i) {
        const double our = ours();
        pairs.add(our, floor());
    }
    return pairs;
}

// Prints a figure. `most` is the highest ratio that is wanted, `most_ours` the highest figure of
// ours.
inline void print(const std::string& what, const char* unit, const Pairs& pairs, double most,
                  double most_ours = 1e9) {
    const double ours = median(pairs.ours);
    const double ratio = pairs.ratio();
    char limit[40] = "";
    if (most_ours < 1e9)
        std::snprintf(limit, sizeof limit, ", %g %s", most_ours, unit);
    // What is rounded to the limit is within it.
    const bool is_met = ratio < most + 0.005 && ours < most_ours;
    std::printf("%s\t%.2f %s\t%.2f %s\t%.2f x\t%.2f x%s\t%s\n", what.c_str(), ours, unit,
                median(pairs.floor), unit, ratio, most, limit, is_met ? "met" : "OVER");
}

} // namespace tollwick::bench
