#include "rules/schedule_lists.h"

#include "base/utf8.h"

namespace tollwick {
namespace {

constexpr std::size_t kIntervalTextSize = 6; // characters

std::string firstCharacters(std::string_view text, std::size_t count) {
    std::string cut;
    for (; count > 0 && !text.empty(); --count)
        appendCodePoint(cut, takeCodePoint(text));
    return cut;
}

} // namespace

std::vector<std::string> scheduleDays(const StringTable& texts) {
    std::vector<std::string> days;
    for (int offset = static_cast<int>(Text::DayMonday);
         offset <= static_cast<int>(Text::DayEveryDay); ++offset)
        days.emplace_back(texts.byOffset(offset));
    return days;
}

std::vector<ScheduleInterval> scheduleIntervals(const StringTable& texts) {
    std::vector<ScheduleInterval> intervals;
    for (const int minutes : kIntervalMinutes) {
        const std::string text =
            minutes < 60 ? std::to_string(minutes) + ' ' + std::string(texts(Text::Minute))
                         : std::to_string(minutes / 60) + ' ' + std::string(texts(Text::Hour));
        intervals.push_back({firstCharacters(text, kIntervalTextSize), minutes});
    }
    intervals.push_back({"", 0});
    return intervals;
}

} // namespace tollwick
