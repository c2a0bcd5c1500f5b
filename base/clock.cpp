#include "base/clock.h"

#include <chrono>
#include <ctime>

namespace tollwick {

LocalTime SystemClock::now() const {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(floor<std::chrono::seconds>(now));
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    const auto fraction = now - floor<std::chrono::seconds>(now);
    return {local.tm_year + 1900,
            local.tm_mon + 1,
            local.tm_mday,
            local.tm_hour,
            local.tm_min,
            local.tm_sec,
            static_cast<int>(duration_cast<milliseconds>(fraction).count() / 10)};
}

} // namespace tollwick
