#include "base/log_writer.h"

#include "base/files.h"
#include "base/little_endian.h"

#include <cstdio>

namespace tollwick {
namespace {

constexpr Integer kRecordKind = 9;
constexpr Integer kRepeatCount = 60;

std::string twoDigits(int number) {
    char text[16];
    std::snprintf(text, sizeof text, "%02d", number);
    return text;
}

} // namespace

std::string logLine(const LocalTime& time, std::string_view message, std::string_view advice,
                    Long error_number, Integer routine, Integer step) {
    std::string line = twoDigits(time.month) + '-' + twoDigits(time.day) + '-' +
                       std::to_string(time.year) + " ; " + twoDigits(time.hour) + ':' +
                       twoDigits(time.minute) + ':' + twoDigits(time.second) + ':' +
                       twoDigits(time.hundredths) + " ; A:";
    line.append(message).append(" ; (").append(std::to_string(error_number));
    line.append("/").append(std::to_string(routine));
    line.append(":").append(std::to_string(step));
    return line.append(") ; ").append(advice).append("\r\n");
}

std::string logRecord(const LocalTime& time, Long error_number, Integer routine, Integer step) {
    std::string record(18, '\0');
    const Long date = (time.year - 1900) * 10000 + time.month * 100 + time.day;
    storeLittleEndian(date, record.data());
    storeLittleEndian(static_cast<Single>(time.secondsSinceMidnight()), record.data() + 4);
    storeLittleEndian(error_number, record.data() + 8);
    storeLittleEndian(kRecordKind, record.data() + 12);
    storeLittleEndian(routine, record.data() + 14);
    storeLittleEndian(step, record.data() + 16);
    return record;
}

void LogWriter::LogWrite(std::string_view message, std::string_view advice, Long error_number,
                         Integer routine, Integer step) {
    // The entry points to "corvale.log" though the log has another name; the wording is wanted.
    system_log_.error(std::string("M: ").append(message).append(", ").append(advice).append(
        "(See corvale.log for details)"));

    if (error_number != last_error_number_)
        repeat_flag_ = kFalse;
    else if (repeat_counter_ > 0)
        repeat_flag_ = kTrue;
    // Nothing counts this down: every message whose number equals the one before is marked. Wanted.
    repeat_counter_ = kRepeatCount;
    last_error_number_ = error_number;

    if (folder_.empty())
        return;
    const LocalTime time = clock_.now();
    appendToFile(toPath(joinPath(folder_, kBinaryLogName)),
                 logRecord(time, error_number, routine, step));
    const std::string marked = (repeat_flag_ != kFalse ? "Loop->" : "") + std::string(message);
    appendToFile(toPath(joinPath(folder_, kTextLogName)),
                 logLine(time, marked, advice, error_number, routine, step));
}

} // namespace tollwick
