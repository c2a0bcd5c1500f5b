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
    const auto add = [&](int count, Text unit, int minutes_each) {
        const std::string text = std::to_string(count) + ' ' + std::string(texts(unit));
        intervals.push_back({firstCharacters(text, kIntervalTextSize), count * minutes_each});
    };
    for (const int minutes : {5, 10, 15, 20, 30})
        add(minutes, Text::Minute, 1);
    for (const int hours : {1, 2, 3, 6, 12})
        add(hours, Text::Hour, 60);
    intervals.push_back({"", 0}); // the eleventh, empty one is wanted
    return intervals;
}

} // namespace tollwick
