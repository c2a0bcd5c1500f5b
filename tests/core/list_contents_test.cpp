#include "ui/dialogs/schedule_rules.h"
#include "ui/main/list_contents.h"
#include "ui/main/node_keys.h"

#include <gtest/gtest.h>

#include <set>

namespace tollwick {
namespace {

const StringTable kTexts(kEnglish);

std::string joined(const std::vector<std::string>& cells) {
    std::string line;
    for (const std::string& cell : cells)
        line += cell + '|';
    return line.substr(0, line.size() - 1);
}

ListRow onlyRow(std::string_view node_key, const ServiceData& data,
                const StringTable& texts = kTexts) {
    const ListContents contents = listContents(node_key, data, texts);
    EXPECT_EQ(contents.row_count, 1U);
    return contents.row(0);
}

TEST(ListContents, ColumnsHaveTheirWidths) {
    const std::pair<std::string_view, std::string> cases[] = {
        {"loginaccount", "Login account 3000"},
        {"schedule", "Day 0|When 0|Between 0|Delay 0"},
        {"uucphosts", "DisplayName 1720|Domain 1000|Active 500"},
        {"logs", "Available logs 0|Period 0"},
        {"admin", "Options 1800|Setting 1200"},
        {"options", "Options 1550|Setting 2150"},
        {"uucpdaemon", "Options 2500|Setting 2000"},
        {"smtpserver", "Function: 1900|Setting 1200"},
        {"smtpforward", "Function 2000|Setting 1200"},
        {"uucpmonitor", "Item: 1800|Status: 4000"},
        {"outbox", "To: 0|Via node: 0|File size: 0|File name: 0"},
        {"servername", ""},
        {"configuration", ""},
        {"system", ""},
        {"view", ""},
        {"", ""},
        {"Logs", ""}};
    const ServiceData data;
    for (const auto& [node, expected] : cases) {
        std::vector<std::string> columns; // title and width in twips
        const ListContents contents = listContents(node, data, kTexts);
        for (const ListColumn& column : contents.columns)
            columns.push_back(column.title + ' ' + std::to_string(column.width));
        EXPECT_EQ(joined(columns), expected) << node;
        EXPECT_TRUE(!expected.empty() || contents.row_count == 0) << node;
    }
}

TEST(ListContents, SchedulesSayWhen) {
    const struct {
        int day, timed, interval;
        const char *at, *first, *second, *delay;
        std::string cells;
    } cases[] = {
        {0, 1, 0, "07:30", "00:00", "23:59", "0", "Monday|At: 07:30|00:00 - 23:59|0"},
        {9, 0, 0, "00:00", "08:00", "17:00", "59", "Every day|Every: 5 min|08:00 - 17:00|59"},
        {6, 0, 9, "", "", "", "0", "Sunday|Every: 12 hou||0"}, // six characters of the interval
        {7, 0, 10, "", "08:00", "", "0", "Weekdays|Every: |08:00 - |0"},
        {10, 0, 11, "", "", "", "-1", "|Every: ||-1"},
        {-1, 1, -1, "1:00", "", "", "0", "|At: 1:00||0"},
    };
    for (const auto& c : cases) {
        ServiceData data;
        storeSchedule({c.day, c.timed == 0, c.interval, c.at, c.first, c.second, c.delay},
                      data.schedules.emplace_back());
        EXPECT_EQ(joined(onlyRow(node::Schedule, data).cells), c.cells);
    }
    ServiceData data;
    data.schedules.emplace_back();
    EXPECT_EQ(joined(onlyRow(node::Schedule, data, StringTable(kSwedish)).cells),
              "Måndag|Varje: 5 min||0");
}

TEST(ListContents, NumbersAreGroupedAndNamed) {
    const std::tuple<Long, const char*, const char*> cases[] = {
        {0, "0 kB", "0 kB"},           {999, "999 kB", "0 kB"},
        {1000, "1,000 kB", "1 kB"},    {1'234'567, "1,234,567 kB", "1,234 kB"},
        {-1500, "-1,500 kB", "-1 kB"}, {2'147'483'647, "2,147,483,647 kB", "2,147,483 kB"}};
    for (const auto& [size, mail, monitor] : cases) { // in kB and in bytes
        ServiceData data;
        data.outbox.emplace_back().size = size;
        EXPECT_EQ(onlyRow(node::Outbox, data).cells.at(2), mail);
        data.uucp_status.file_size = size;
        EXPECT_EQ(monitorTexts(data.uucp_status).at(4), monitor);
    }
    const UucpStatusRecord status{1234, 7, 0, 0, 55, 33600, VarText("Sending  "), VarText("D.1")};
    EXPECT_EQ(monitorTexts(status),
              (std::array<std::string, kMonitorRows>{"Sending", "1234", "7", "D.1", "0 kB", "55 %",
                                                     "33600 bps"}));
}

TEST(ListContents, SwitchesShowTheirStateAsAnIcon) {
    using S = SettingsRecord;
    // A switch without a period shows "-" in the value column.
    const std::tuple<std::string, Integer S::*, Integer S::*> cases[] = {
        {"allowpriority", &S::allow_priority, nullptr},
        {"Scheduleactivated", &S::schedule_activated, nullptr},
        {"dischargecr", &S::discharge_cr, nullptr},
        {"forcesendparams", &S::force_send_params, nullptr},
        {"maillogging", &S::mail_logging, &S::mail_log_period},
        {"uucptransferlogging", &S::uucp_transfer_logging, &S::uucp_transfer_log_period},
        {"smtplogging", &S::smtp_logging, &S::smtp_log_period},
        {"scriptlogging", &S::script_logging, &S::script_log_period},
        {"comlogging", &S::com_logging, &S::com_log_period},
        {"uucpcmdlogging", &S::uucp_command_logging, &S::uucp_command_log_period},
        {"uucpadvlogging", &S::uucp_advanced_logging, &S::uucp_advanced_log_period}};
    for (const auto& [key, value, period] : cases) {
        ServiceData data;
        data.settings.*value = kTrue;
        if (period)
            data.settings.*period = 365;
        std::string changed;
        for (const std::string_view node_key : {node::Options, node::UucpDaemon, node::Logs}) {
            const ListContents contents = listContents(node_key, data, kTexts);
            for (std::size_t i = 0; i < contents.row_count; ++i)
                if (const ListRow row = contents.row(i);
                    row.image == "squareselected" || row.cells.at(1) == "365")
                    changed += row.key + ' ' + std::string(row.image) + ' ' + row.cells.at(1);
        }
        EXPECT_EQ(changed, key + " squareselected " + (period ? "365" : "-"));
    }
}

TEST(ListContents, RowsFollowTheirRecordsAndCanBeToldApart) {
    ServiceData data;
    data.user_id = "åsa";
    EXPECT_EQ(onlyRow(node::LoginAccount, data).cells, std::vector<std::string>{"åsa"});

    HostRecord host;
    host.record_number = 3;
    host.display_name = "Lager";
    host.active = kTrue;
    data.hosts = {host};
    const ListContents hosts = listContents(node::UucpHosts, data, kTexts);
    EXPECT_EQ(joined(hosts.row(0).cells), "Lager||Yes");
    data.hosts[0].active = kFalse;
    EXPECT_EQ(joined(hosts.row(0).cells), "Lager||No");

    // The same file for two recipients, and the other way round.
    for (const auto& [recipient, file] : {std::pair{"a", "1"}, {"b", "1"}, {"a", "2"}}) {
        OutboxRecord& mail = data.outbox.emplace_back();
        mail.recipient = recipient;
        mail.file_name = file;
    }
    const ListContents outbox = listContents(node::Outbox, data, kTexts);
    std::set<std::string> identities;
    for (std::size_t i = 0; i < outbox.row_count; ++i)
        identities.insert(outbox.row(i).identity);
    EXPECT_EQ(identities.size(), 3U);
}

} // namespace
} // namespace tollwick
