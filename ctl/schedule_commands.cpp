// Schedules, by the rules of their editor.
#include "ctl/field_arguments.h"
#include "ctl/records.h"
#include "rules/schedule_rules.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace tollwick::ctl {
namespace {

ExitStatus fetchSchedules(Session& session) {
    const ExitStatus status = session.logIn();
    return status == ExitStatus::Done ? session.statusOf(session.requests.txGetAllSchedules())
                                      : status;
}

void show(Session& session, std::span<const ScheduleRecord> schedules) {
    if (session.output.isJson())
        return session.output.document("schedules", recordsJson(schedules));
    std::vector<Row> rows;
    Row heading;
    for (const ScheduleRecord& schedule : schedules) {
        Row row;
        heading.clear();
        for (const std::string_view name : {"record_number", "day", "timed", "at_time", "interval",
                                            "between_first", "between_second", "delay"}) {
            heading.emplace_back(name);
            row.push_back(shownField(schedule, name));
        }
        rows.push_back(std::move(row));
    }
    session.output.table(heading, rows);
}

// The number that the word is, or nothing.
std::optional<Long> recordNumber(const std::string& word) {
    Long number = 0;
    const char* end = word.data() + word.size();
    const auto read = std::from_chars(word.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

const ScheduleRecord* findSchedule(Session& session, Long number) {
    const std::vector<ScheduleRecord>& schedules = session.context.data.schedules;
    const auto found =
        std::find_if(schedules.begin(), schedules.end(), [number](const ScheduleRecord& schedule) {
            return schedule.record_number == number;
        });
    return found == schedules.end() ? nullptr : &*found;
}

// Checks and sends the current schedule with these fields changed.
ExitStatus save(Session& session, std::span<const Assignment> assignments, bool is_new) {
    ServiceData& data = session.context.data;
    ScheduleRecord changed = data.current_schedule;
    if (const auto status = assign(session, assignments, changed); status != ExitStatus::Done)
        return status;
    changed.identity = 0;
    ScheduleEntry entry = *entryOf(changed);
    if (const auto problem = checkSchedule(entry, scheduleIntervals(session.texts)))
        return session.refuse(problem->text);
    storeSchedule(entry, data.current_schedule);
    if (is_new && scheduleExists(data.current_schedule, data.schedules))
        return session.refuse(Text::ScheduleExists);
    const ExitStatus status = session.statusOf(session.requests.txSaveSchedule(is_new));
    if (status == ExitStatus::Done)
        show(session, {&data.current_schedule, 1});
    return status;
}

} // namespace

ExitStatus listSchedules(Session& session, const Arguments&) {
    const ExitStatus status = fetchSchedules(session);
    if (status == ExitStatus::Done)
        show(session, session.context.data.schedules);
    return status;
}

ExitStatus addSchedule(Session& session, const Arguments& arguments) {
    std::vector<Assignment> assignments;
    if (const auto status = readFields<ScheduleRecord>(session, arguments.words, assignments);
        status != ExitStatus::Done)
        return status;
    if (const auto status = fetchSchedules(session); status != ExitStatus::Done)
        return status;
    const auto isNamed = [&](std::string_view name) {
        return std::any_of(assignments.begin(), assignments.end(),
                           [name](const Assignment& given) { return given.name == name; });
    };
    ScheduleEntry entry;
    // Whoever names an interval and no time means it.
    entry.is_interval = isNamed("interval") && !isNamed("at_time");
    ScheduleRecord& schedule = session.context.data.current_schedule;
    schedule = EmptyScheduleRecord;
    storeSchedule(entry, schedule);
    return save(session, assignments, true);
}

ExitStatus changeSchedule(Session& session, const Arguments& arguments) {
    const std::span<const std::string> words = arguments.words;
    const std::optional<Long> number = recordNumber(words.front());
    if (!number)
        return session.refuse(Text::CtlNoNumber, {words.front()});
    std::vector<Assignment> assignments;
    if (const auto status = readFields<ScheduleRecord>(session, words.subspan(1), assignments);
        status != ExitStatus::Done)
        return status;
    if (const auto status = fetchSchedules(session); status != ExitStatus::Done)
        return status;
    const ScheduleRecord* schedule = findSchedule(session, *number);
    if (!schedule)
        return session.notFound(Text::CtlNoSchedule, words.front());
    session.context.data.current_schedule = *schedule;
    return save(session, assignments, false);
}

ExitStatus deleteSchedules(Session& session, const Arguments& arguments) {
    for (const std::string& word : arguments.words)
        if (!recordNumber(word))
            return session.refuse(Text::CtlNoNumber, {word});
    if (const auto status = fetchSchedules(session); status != ExitStatus::Done)
        return status;
    std::set<Long> numbers;
    for (const std::string& word : arguments.words) {
        if (!findSchedule(session, *recordNumber(word)))
            return session.notFound(Text::CtlNoSchedule, word);
        numbers.insert(*recordNumber(word));
    }
    for (const Long number : numbers)
        if (hasFailed(session.requests.txDeleteSchedule(number)))
            return session.failure();
    return ExitStatus::Done;
}

} // namespace tollwick::ctl
