// Writes each message to the system log, to the text log "Tollwick.log" and to the binary log
// "error.log".
#pragma once

#include "base/clock.h"
#include "base/number_types.h"
#include "base/system_log.h"

#include <string>
#include <string_view>

namespace tollwick {

inline constexpr std::string_view kTextLogName = "Tollwick.log";
inline constexpr std::string_view kBinaryLogName = "error.log";

class LogWriter {
public:
    LogWriter(SystemLog& system_log, const Clock& clock) : system_log_(system_log), clock_(clock) {}

    // The folder of both log files, UTF-8. Until it is set only the system log is written.
    void setFolder(std::string folder) { folder_ = std::move(folder); }
    [[nodiscard]] const std::string& folder() const { return folder_; }

    // All texts are UTF-8. A log that cannot be written loses the message silently.
    void LogWrite(std::string_view message, std::string_view advice, Long error_number,
                  Integer routine, Integer step);

private:
    SystemLog& system_log_;
    const Clock& clock_;
    std::string folder_;

    Long last_error_number_ = 0;
    Integer repeat_counter_ = 0;
    Integer repeat_flag_ = kFalse;
};

// One line of the text log, CR LF included.
std::string logLine(const LocalTime& time, std::string_view message, std::string_view advice,
                    Long error_number, Integer routine, Integer step);

// One record of the binary log, 18 bytes.
std::string logRecord(const LocalTime& time, Long error_number, Integer routine, Integer step);

} // namespace tollwick
