// What the nodes that group others list, and when the next transport starts.
#include "rules/list_contents.h"
#include "rules/next_start.h"
#include "rules/node_keys.h"
#include "wire/comrecord.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

constexpr Integer kWeekdays = 7;
constexpr Integer kWeekends = 8;
constexpr Integer kEveryDay = 9;
constexpr Integer kTwoHours = 6;

ScheduleRecord at(Integer day, const char* time) {
    ScheduleRecord schedule;
    schedule.day = day;
    schedule.timed = 1;
    schedule.at_time = time;
    return schedule;
}
ScheduleRecord every(Integer day, Integer interval, const char* first, const char* second,
                     Integer delay = 0) {
    ScheduleRecord schedule;
    schedule.day = day;
    schedule.interval = interval;
    schedule.between_first = first;
    schedule.between_second = second;
    schedule.delay = delay;
    return schedule;
}

TEST(NextStart, IsTheEarliestWithinAWeek) {
    const auto minute = [](int hour, int minutes) { return hour * 60 + minutes; };
    const auto day_long = every(kEveryDay, kTwoHours, "09:00", "21:00", 5);
    const struct {
        std::vector<ScheduleRecord> schedules;
        WeekTime now;
        std::optional<WeekTime> next;
    } cases[] = {// clang-format off
        {{}, {0, 0}, {}},
        {{at(2, "07:30")}, {2, minute(7, 29)}, WeekTime{2, minute(7, 30)}},
        {{at(2, "07:30")}, {2, minute(7, 30)}, WeekTime{2, minute(7, 30)}}, // in a week
        {{at(2, "07:30"), at(1, "23:59")}, {6, 0}, WeekTime{1, minute(23, 59)}},
        {{at(kWeekdays, "08:00")}, {4, minute(8, 0)}, WeekTime{0, minute(8, 0)}},
        {{at(kWeekends, "08:00")}, {4, minute(8, 0)}, WeekTime{5, minute(8, 0)}},
        {{at(kEveryDay, "00:00")}, {6, minute(23, 59)}, WeekTime{0, 0}},
        {{day_long}, {3, 0}, WeekTime{3, minute(9, 5)}},
        {{day_long}, {3, minute(9, 5)}, WeekTime{3, minute(11, 5)}},
        {{day_long}, {3, minute(19, 5)}, WeekTime{4, minute(9, 5)}},
        {{every(kEveryDay, kTwoHours, "09:00", "21:00")}, {3, minute(20, 59)}, WeekTime{3, minute(21, 0)}},
        // A day, an interval and times that there are not.
        {{at(12, "08:00"), every(0, 10, "09:00", "21:00"), every(0, -1, "09:00", "21:00"),
          at(0, "25:00"), every(0, 0, "", "21:00"), every(0, 0, "09:00", "")}, {0, 0}, {}}};
    // clang-format on
    for (const auto& c : cases)
        EXPECT_EQ(nextStart(c.schedules, c.now), c.next) << &c - cases;
    EXPECT_EQ(weekTime({2026, 11, 23, 8, 30, 59, 0}), (WeekTime{0, minute(8, 30)}));
    EXPECT_EQ(weekTime({2024, 2, 29, 0, 0, 0, 0}), (WeekTime{3, 0}));
}

std::vector<std::string> rowsOf(std::string_view node_key, const ServiceData& data,
                                Integer language = kEnglish) {
    const StringTable texts(language);
    const ListContents contents =
        listContents(node_key, data, texts, {"mail.example", "542", {2026, 11, 23, 8, 30, 0, 0}});
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < contents.row_count; ++i) {
        const ListRow row = contents.row(i);
        rows.push_back(row.key + ' ' + std::string(row.image) + ' ' + row.cells.at(0) + ' ' +
                       row.cells.at(1));
    }
    return rows;
}

TEST(Overview, OfTheServiceTellsWhatAnAdministratorWantsToKnowFirst) {
    ServiceData data;
    data.user_id = "admin";
    data.password = "secret";
    data.settings.service_version = 4;
    data.settings.schedule_activated = kTrue;
    data.settings.mail_logging = kTrue;
    data.settings.uucp_advanced_logging = kTrue;
    data.schedules = {at(kWeekdays, "07:30")};
    data.hosts.resize(2);
    data.hosts[1].active = kTrue;
    data.hosts[1].remote_uucp_name = "Lund";
    data.outbox = {{VarText("a"), VarText("malmo"), VarText("1"), VarText(), 1200},
                   {VarText("b"), VarText("lund"), VarText("2"), VarText(), 34},
                   {VarText("c"), VarText("LUND "), VarText("3"), VarText(), 0}};
    data.uucp_status.state = "Sleeping";
    const std::vector<std::string> rows = {
        "admin admin Service: mail.example:542",
        "admin admin Version: 4",
        "loginaccount lock Logged in as: admin",
        "uucpmonitor monitor UUCP transport: Sleeping",
        "options options Schedule activated: Yes",
        "schedule schedule Next start: Tuesday 07:30",
        "uucphosts transport UUCP hosts: 2, of which active: 1",
        "outbox mailbox Outbox: mails: 3, together 1,234 kB, most of them for node lund: 2",
        "logs log Logs that are on: Mail logging, UUCP advanced logging",
        "outbox mailbox Warning: Mails wait for a node that no host has: malmo"};
    EXPECT_EQ(rowsOf("servername", data), rows);

    ServiceData bare; // and now all that there is to warn of
    EXPECT_EQ(
        rowsOf("servername", bare, kSwedish),
        (std::vector<std::string>{
            "admin admin Tjänst: mail.example:542", "admin admin Version: 0",
            "loginaccount lock Inloggad som: ",
            "uucpmonitor monitor UUCP-överföring: inte efterfrågat än",
            "options options Schema aktiverat: Nej", "schedule schedule Nästa start: ingen",
            "uucphosts transport UUCP-värdar: 0, varav aktiva: 0",
            "outbox mailbox Utkorg: meddelanden: 0, tillsammans 0 kB",
            "logs log Loggar som är på: ingen",
            "uucphosts transport Varning: Ingen UUCP-värd är aktiv.",
            "options options Varning: Scheman är avstängda; ingen överföring startar av sig själv.",
            "loginaccount lock Varning: Administratören har inget lösenord."}));
}

TEST(Overview, OfTheOtherNodesSumsUpTheirChildren) {
    ServiceData data;
    data.user_id = "admin";
    data.settings.admin_ip = "192.0.2.1";
    data.settings.admin_port = 542;
    data.settings.doc_viewer = "viewer";
    data.settings.schedule_activated = kTrue;
    data.settings.smtp_logging = kTrue;
    data.schedules.resize(3);
    data.hosts.resize(1);
    EXPECT_EQ(
        rowsOf("configuration", data),
        (std::vector<std::string>{
            "loginaccount lock Login account admin", "schedule schedule Schedules schedules: 3",
            "system system System Admin, Logs, Options, SMTP Server, SMTP Forward, UUCP Daemon",
            "uucphosts transport UUCP hosts 1, of which active: 0"}));
    EXPECT_EQ(
        rowsOf("system", data),
        (std::vector<std::string>{
            "admin admin Admin 192.0.2.1, 542", "logs log Logs on: 1 of 7",
            "options options Options viewer, on: 1 of 2", "smtpserver mailin SMTP Server 0",
            "smtpforward mailout SMTP Forward 0", "uucpdaemon modem UUCP Daemon on: 0 of 2"}));
    EXPECT_EQ(rowsOf("view", data),
              (std::vector<std::string>{"outbox mailbox Outbox mails: 0, together 0 kB",
                                        "uucpmonitor monitor UUCP monitor not asked yet"}));
}

} // namespace
} // namespace tollwick
