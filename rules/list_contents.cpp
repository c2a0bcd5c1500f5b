#include "rules/list_contents.h"

#include "base/numeric.h"
#include "rules/node_keys.h"
#include "rules/overview.h"
#include "rules/schedule_lists.h"
#include "rules/schedule_rules.h"
#include "rules/setting_rows.h"

#include <memory>

namespace tollwick {
namespace {

struct ColumnLayout {
    std::string_view node_key;
    Text title;
    int width; // twips
    bool is_number = false;
};

constexpr int kByContents = 0;
constexpr std::size_t kMailSizeColumn = 2;
constexpr double kMinutesOfDay = 24 * 60;

constexpr ColumnLayout kColumns[] = {
    {node::LoginAccount, Text::ColLoginAccount, 3000},
    {node::Schedule, Text::ColDay, kByContents},
    {node::Schedule, Text::ColWhen, kByContents},
    {node::Schedule, Text::ColBetween, kByContents},
    {node::Schedule, Text::ColDelay, kByContents, true},
    {node::UucpHosts, Text::ColHostDisplayName, 1720},
    {node::UucpHosts, Text::ColHostDomain, 1000},
    {node::UucpHosts, Text::ColHostActive, 500},
    {node::Logs, Text::ColLogsAvailable, kByContents},
    {node::Logs, Text::ColLogsPeriod, kByContents, true},
    {node::Admin, Text::ColAdminOptions, 1800},
    {node::Admin, Text::ColAdminSetting, 1200},
    {node::Options, Text::ColOptionsOptions, 1550},
    {node::Options, Text::ColOptionsSetting, 2150},
    {node::UucpDaemon, Text::ColDaemonOptions, 2500},
    {node::UucpDaemon, Text::ColDaemonSetting, 2000},
    {node::SmtpServer, Text::ColSmtpServerFunction, 1900},
    {node::SmtpServer, Text::ColSmtpServerSetting, 1200},
    {node::SmtpForward, Text::ColSmtpForwardFunction, 2000},
    {node::SmtpForward, Text::ColSmtpForwardSetting, 1200},
    {node::UucpMonitor, Text::ColMonitorItem, 1800},
    {node::UucpMonitor, Text::ColMonitorStatus, 4000},
    {node::Outbox, Text::ColOutboxTo, kByContents},
    {node::Outbox, Text::ColOutboxVia, kByContents},
    {node::Outbox, Text::ColOutboxSize, kByContents, true},
    {node::Outbox, Text::ColOutboxFile, kByContents},
    {node::ServerName, Text::ColMonitorItem, 1800},
    {node::ServerName, Text::ColMonitorStatus, 4000},
    {node::Configuration, Text::ColMonitorItem, 1800},
    {node::Configuration, Text::ColMonitorStatus, 4000},
    {node::System, Text::ColMonitorItem, 1800},
    {node::System, Text::ColMonitorStatus, 4000},
    {node::View, Text::ColMonitorItem, 1800},
    {node::View, Text::ColMonitorStatus, 4000},
};

constexpr std::array<Text, kMonitorRows> kMonitorCaptions = {
    Text::RowMonitorState,    Text::RowMonitorQueuedFiles, Text::RowMonitorFileNumber,
    Text::RowMonitorFileName, Text::RowMonitorFileSize,    Text::RowMonitorProgress,
    Text::RowMonitorSpeed};

// Rows that are few and stay as they are.
void setRows(ListContents& contents, std::vector<ListRow> rows) {
    contents.row_count = rows.size();
    const auto shared = std::make_shared<const std::vector<ListRow>>(std::move(rows));
    contents.row = [shared](std::size_t row) { return shared->at(row); };
    contents.cell = [shared](std::size_t row, std::size_t column) {
        return shared->at(row).cells.at(column);
    };
    contents.value = [shared, columns = contents.columns](std::size_t row, std::size_t column) {
        return columns.at(column).is_number
                   ? std::optional(numericValue(shared->at(row).cells.at(column)))
                   : std::nullopt;
    };
}

// Rows that follow a list of records.
template <class Record, class Cell, class Value, class Identity>
void followRecords(ListContents& contents, const std::vector<Record>& records,
                   std::string_view image, Cell cell, Value value, Identity identity) {
    contents.row_count = records.size();
    contents.row = [=, &records, columns = contents.columns.size()](std::size_t row) {
        const Record& record = records.at(row);
        ListRow shown{std::string(kPlainRowKey), image, {}, identity(record)};
        for (std::size_t column = 0; column < columns; ++column)
            shown.cells.push_back(cell(record, column));
        return shown;
    };
    contents.cell = [=, &records](std::size_t row, std::size_t column) {
        return cell(records.at(row), column);
    };
    contents.value = [=, &records](std::size_t row, std::size_t column) {
        return value(records.at(row), column);
    };
}

std::vector<ListRow> settingListRows(std::string_view node_key, const SettingsRecord& settings,
                                     const StringTable& texts) {
    std::vector<ListRow> rows;
    for (const SettingRow& row : settingRows())
        if (row.node_key == node_key)
            rows.push_back({std::string(row.key),
                            imageOf(row, settings),
                            {std::string(texts(row.caption)), valueText(row, settings)},
                            std::string(row.key)});
    return rows;
}

std::vector<ListRow> monitorRows(const UucpStatusRecord& status, const StringTable& texts) {
    std::vector<ListRow> rows;
    const std::array<std::string, kMonitorRows> values = monitorTexts(status);
    for (std::size_t i = 0; i < kMonitorRows; ++i)
        rows.push_back({std::string(kPlainRowKey),
                        "monitor",
                        {std::string(texts(kMonitorCaptions[i])), values[i]},
                        std::to_string(i)});
    return rows;
}

std::string hostCell(const HostRecord& host, std::size_t column, const StringTable& texts) {
    switch (column) {
    case 0:
        return host.display_name.text();
    case 1:
        return host.mail_domain.text();
    default:
        return std::string(texts(host.active != kFalse ? Text::HostActiveYes : Text::HostActiveNo));
    }
}

std::string mailCell(const OutboxRecord& mail, std::size_t column) {
    switch (column) {
    case 0:
        return mail.recipient.text();
    case 1:
        return mail.node.text();
    case kMailSizeColumn:
        return groupedNumber(mail.size) + " kB";
    default:
        return mail.file_name.text();
    }
}

// The entry at `position`, or nothing for a position outside the list.
std::string entryAt(const std::vector<std::string>& list, Integer position) {
    const auto index = static_cast<std::size_t>(position);
    return position >= 0 && index < list.size() ? list[index] : std::string();
}

std::string intervalText(const StringTable& texts, Integer position) {
    std::vector<std::string> names;
    for (const ScheduleInterval& interval : scheduleIntervals(texts))
        names.push_back(interval.text);
    return entryAt(names, position);
}

std::string scheduleCell(const ScheduleRecord& schedule, std::size_t column,
                         const StringTable& texts) {
    switch (column) {
    case 0:
        return entryAt(scheduleDays(texts), schedule.day);
    case 1:
        return schedule.timed != 0
                   ? std::string(texts(Text::ScheduleAt)) + ' ' + schedule.at_time.text()
                   : std::string(texts(Text::ScheduleEvery)) + ' ' +
                         intervalText(texts, schedule.interval);
    case 2:
        return schedule.between_first.text() + " - " + schedule.between_second.text();
    default:
        return std::to_string(schedule.delay);
    }
}

// Times of the day come before intervals, short intervals before long ones.
double scheduleValue(const ScheduleRecord& schedule, std::size_t column,
                     const std::vector<ScheduleInterval>& intervals) {
    switch (column) {
    case 0:
        return schedule.day;
    case 1: {
        if (schedule.timed != 0)
            return minuteOfDay(schedule.at_time.text()).value_or(-1);
        const auto interval = static_cast<std::size_t>(schedule.interval);
        return kMinutesOfDay + (interval < intervals.size() ? intervals[interval].minutes : 0);
    }
    case 2:
        return minuteOfDay(schedule.between_first.text()).value_or(-1);
    default:
        return schedule.delay;
    }
}

} // namespace

std::array<std::string, kMonitorRows> monitorTexts(const UucpStatusRecord& status) {
    return {status.state.text(),
            std::to_string(status.queued_files),
            std::to_string(status.file_number),
            status.file_name.text(),
            groupedNumber(status.file_size / 1000) + " kB", // thousands of bytes: wanted
            std::to_string(status.percent) + " %",
            std::to_string(status.average_speed) + " bps"};
}

ListContents listContents(std::string_view node_key, const ServiceData& data,
                          const StringTable& texts, const Surroundings& around) {
    ListContents contents;
    for (const ColumnLayout& column : kColumns)
        if (column.node_key == node_key)
            contents.columns.push_back(
                {std::string(texts(column.title)), column.width, column.is_number});

    if (node_key == node::LoginAccount) {
        setRows(contents, {{std::string(kPlainRowKey), "lock", {data.user_id}, "login"}});
    } else if (node_key == node::Schedule) {
        followRecords(
            contents, data.schedules, "schedule",
            [&texts](const ScheduleRecord& schedule, std::size_t column) {
                return scheduleCell(schedule, column, texts);
            },
            [intervals = scheduleIntervals(texts)](const ScheduleRecord& schedule,
                                                   std::size_t column) {
                return std::optional(scheduleValue(schedule, column, intervals));
            },
            [](const ScheduleRecord& schedule) { return std::to_string(schedule.record_number); });
    } else if (node_key == node::UucpHosts) {
        followRecords(
            contents, data.hosts, "transport",
            [&texts](const HostRecord& host, std::size_t column) {
                return hostCell(host, column, texts);
            },
            [](const HostRecord&, std::size_t) { return std::optional<double>(); },
            [](const HostRecord& host) { return std::to_string(host.record_number); });
    } else if (node_key == node::Outbox) {
        followRecords(
            contents, data.outbox, "outboxcont", mailCell,
            [](const OutboxRecord& mail, std::size_t column) {
                return column == kMailSizeColumn ? std::optional<double>(mail.size) : std::nullopt;
            },
            [](const OutboxRecord& mail) {
                return mail.node.text() + '\n' + mail.file_name.text() + '\n' +
                       mail.recipient.text();
            });
    } else if (node_key == node::UucpMonitor) {
        setRows(contents, monitorRows(data.uucp_status, texts));
    } else if (isGrouping(node_key)) {
        setRows(contents, overviewRows(node_key, data, texts, around));
    } else {
        setRows(contents, settingListRows(node_key, data.settings, texts));
    }
    return contents;
}

} // namespace tollwick
