// The system's own log of errors: the event log on Windows, syslog elsewhere.
#pragma once

#include <memory>
#include <string_view>

namespace tollwick {

class SystemLog {
public:
    virtual ~SystemLog() = default;
    // One entry of type error; `text` is UTF-8. False when it could not be written, which nobody is
    // told.
    virtual bool error(std::string_view text) = 0;
};

// The log of this platform.
std::unique_ptr<SystemLog> platformSystemLog();

} // namespace tollwick
