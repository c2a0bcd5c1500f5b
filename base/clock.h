// The local time of day, behind an interface so that tests can set it.
#pragma once

namespace tollwick {

struct LocalTime {
    int year;
    int month;      // 1 to 12
    int day;        // 1 to 31
    int hour;       // 0 to 23
    int minute;     // 0 to 59
    int second;     // 0 to 60
    int hundredths; // 0 to 99
    // Seconds since midnight; restarts at 0 every midnight.
    [[nodiscard]] double secondsSinceMidnight() const {
        return hour * 3600 + minute * 60 + second + hundredths / 100.0;
    }
};

class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual LocalTime now() const = 0;
};

class SystemClock : public Clock {
public:
    [[nodiscard]] LocalTime now() const override;
};

} // namespace tollwick
