#include "ui/main/list_contents.h"

#include "app/numeric.h"
#include "ui/dialogs/schedule_lists.h"
#include "ui/main/node_keys.h"
#include "ui/main/setting_rows.h"

namespace tollwick {
namespace {

struct ColumnLayout {
    std::string_view node_key;
    Text title;
    int width; // twips
    bool is_number = false;
};

constexpr int kByContents = 0;

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
};

constexpr std::array<Text, kMonitorRows> kMonitorCaptions = {
    Text::RowMonitorState,    Text::RowMonitorQueuedFiles, Text::RowMonitorFileNumber,
    Text::RowMonitorFileName, Text::RowMonitorFileSize,    Text::RowMonitorProgress,
    Text::RowMonitorSpeed};

void setRows(ListContents& contents, std::vector<ListRow> rows) {
    contents.row_count = rows.size();
    contents.row = [rows = std::move(rows)](std::size_t index) { return rows.at(index); };
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

ListRow hostRow(const HostRecord& host, const StringTable& texts) {
    const Text active = host.active != kFalse ? Text::HostActiveYes : Text::HostActiveNo;
    return {std::string(kPlainRowKey),
            "transport",
            {host.display_name.text(), host.mail_domain.text(), std::string(texts(active))},
            std::to_string(host.record_number)};
}

ListRow mailRow(const OutboxRecord& mail) {
    return {std::string(kPlainRowKey),
            "outboxcont",
            {mail.recipient.text(), mail.node.text(), groupedNumber(mail.size) + " kB",
             mail.file_name.text()},
            mail.file_name.text() + '\n' + mail.recipient.text()};
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

} // namespace

ListRow scheduleRow(const ScheduleRecord& schedule, const StringTable& texts) {
    const bool timed = schedule.timed != 0;
    const std::string when =
        std::string(texts(timed ? Text::ScheduleAt : Text::ScheduleEvery)) + ' ' +
        (timed ? schedule.at_time.text() : intervalText(texts, schedule.interval));
    const std::string first = schedule.between_first.text();
    const std::string second = schedule.between_second.text();
    const std::string between = first.empty() && second.empty() ? "" : first + " - " + second;
    return {std::string(kPlainRowKey),
            "schedule",
            {entryAt(scheduleDays(texts), schedule.day), when, between,
             std::to_string(schedule.delay)},
            std::to_string(schedule.record_number)};
}

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
                          const StringTable& texts) {
    ListContents contents;
    for (const ColumnLayout& column : kColumns)
        if (column.node_key == node_key)
            contents.columns.push_back(
                {std::string(texts(column.title)), column.width, column.is_number});

    if (node_key == node::LoginAccount) {
        setRows(contents, {{std::string(kPlainRowKey), "lock", {data.user_id}, "login"}});
    } else if (node_key == node::Schedule) {
        contents.row_count = data.schedules.size();
        contents.row = [&](std::size_t i) { return scheduleRow(data.schedules.at(i), texts); };
    } else if (node_key == node::UucpHosts) {
        contents.row_count = data.hosts.size();
        contents.row = [&](std::size_t i) { return hostRow(data.hosts.at(i), texts); };
    } else if (node_key == node::Outbox) {
        contents.row_count = data.outbox.size();
        contents.row = [&](std::size_t i) { return mailRow(data.outbox.at(i)); };
    } else if (node_key == node::UucpMonitor) {
        setRows(contents, monitorRows(data.uucp_status, texts));
    } else {
        setRows(contents, settingListRows(node_key, data.settings, texts));
    }
    return contents;
}

} // namespace tollwick
