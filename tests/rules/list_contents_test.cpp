// What the lists and the monitor show, and how lists are ordered and taken elsewhere.
#include "rules/list_contents.h"
#include "rules/list_export.h"
#include "rules/list_order.h"
#include "rules/node_keys.h"
#include "rules/schedule_rules.h"
#include "rules/setting_rows.h"
#include "rules/speed_history.h"
#include "rules/transport_watch.h"
#include "wire/record_packing.h"

#include <gtest/gtest.h>

#include <set>

namespace tollwick {
namespace {

const StringTable kTexts(kEnglish);

std::string joined(const std::vector<std::string>& cells) {
    std::string line;
    for (const std::string& cell : cells)
        line += cell + '|';
    return line;
}

// The cells of a row that has been added last.
std::string lastRow(std::string_view node_key, const ServiceData& data,
                    const StringTable& texts = kTexts) {
    const ListContents contents = listContents(node_key, data, texts);
    return joined(contents.row(contents.row_count - 1).cells);
}

// The first cells of the rows that are left, in their order.
std::string ordered(const ListContents& contents, ListSort sort, std::string_view filter = {}) {
    std::vector<std::string> cells;
    for (const std::size_t row : orderedRows(contents, sort, filter))
        cells.push_back(contents.cell(row, 0));
    return joined(cells);
}

TEST(ListContents, RowsFollowTheirRecordsAndCanBeToldApart) {
    ServiceData data;
    UucpStatusRecord status;
    status.file_size = -1'234'567;
    EXPECT_EQ(monitorTexts(status)[4], "-1,234 kB");
    // The same file for two recipients, and the other way round.
    std::set<std::string> identities;
    for (const auto& [to, file] : {std::pair{"a", "1"}, {"b", "1"}, {"a", "2"}}) {
        data.outbox.push_back({VarText(to), VarText("n"), VarText(file), VarText(), 1234});
        identities.insert(
            listContents(node::Outbox, data, kTexts).row(data.outbox.size() - 1).identity);
    }
    EXPECT_EQ(identities.size(), 3U);
    EXPECT_EQ(lastRow(node::Outbox, data), "a|n|1,234 kB|2|");
}

TEST(ListContents, SchedulesSayWhenAndSortByIt) {
    const std::pair<ScheduleEntry, std::string> cases[] = {
        {{4, false, 0, "9:05", "10:00", "23:59", "5"}, "Friday|At: 9:05|10:00 - 23:59|5|"},
        {{0, false, 0, "10:00", "", "", "20"}, "Monday|At: 10:00| - |20|"},
        {{9, true, 9, "", "9:30", "", "100"}, "Every day|Every: 12 hou|9:30 - |100|"},
        {{6, true, 0, "", "00:00", "17:00", "-1"}, "Sunday|Every: 5 min|00:00 - 17:00|-1|"}};
    ServiceData data;
    for (const auto& [entry, cells] : cases) {
        storeSchedule(entry, data.schedules.emplace_back());
        EXPECT_EQ(lastRow(node::Schedule, data), cells);
    }
    const ListContents contents = listContents(node::Schedule, data, kTexts);
    EXPECT_EQ(ordered(contents, {0, false}), "Monday|Friday|Sunday|Every day|");
    EXPECT_EQ(ordered(contents, {1, false}), "Friday|Monday|Sunday|Every day|");
    EXPECT_EQ(ordered(contents, {2, false}), "Monday|Sunday|Every day|Friday|");
    EXPECT_EQ(ordered(contents, {3, false}), "Sunday|Friday|Monday|Every day|");
    storeSchedule({10, true, 11, "", "", "", "0"}, data.schedules[0]); // positions of no list
    storeSchedule({-1, true, -1, "", "", "", "0"}, data.schedules[3]);
    EXPECT_EQ(joined(contents.row(0).cells), "|Every: | - |0|");
    EXPECT_EQ(lastRow(node::Schedule, data, StringTable(kSwedish)), "|Varje: | - |0|");
}

TEST(ListContents, EverySettingIsShownFromItsFieldAndASwitchAsAnIcon) {
    std::string rows; // that show something else for each field of the record, in its order
    forEachField<SettingsRecord>([&rows](const auto& field) {
        SettingsRecord settings;
        auto& value = settings.*field.member;
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, VarText>)
            value = "7";
        else if constexpr (std::is_integral_v<std::decay_t<decltype(value)>>)
            value = 7;
        for (const SettingRow& row : settingRows()) {
            const bool is_on = imageOf(row, settings) == kSwitchOnImage;
            if (is_on || valueText(row, settings) == "7")
                rows += std::string(row.key) + (is_on ? "!" : "");
        }
        rows += ' ';
    });
    EXPECT_EQ(rows,
              "    SmtpServiceIp SmtpServicePort smtpforwardip smtpforwardport adminip adminport "
              "Scheduleactivated! docviewer allowpriority! uucppriorcmd uucpaftercmd "
              "remotedebugginglevel forcesendparams! dischargecr! maillogging! "
              "uucptransferlogging! smtplogging! scriptlogging! uucpadvlogging! "
              "uucpcmdlogging! comlogging! maillogging uucptransferlogging smtplogging "
              "scriptlogging uucpadvlogging uucpcmdlogging comlogging     ");
}

TEST(ListOrder, MailsSortBySizeAndByAlphabetAndLogsByTheirPeriod) {
    ServiceData data;
    for (const auto& [to, size] : {std::pair{"Örjan", 9},
                                   {"bo", 1000},
                                   {"Åsa", 20},
                                   {"Ärla", 20},
                                   {"Zoe", 300},
                                   {"axel", 20}})
        data.outbox.push_back({VarText(to), VarText(), VarText(), VarText(), size});
    const ListContents contents = listContents(node::Outbox, data, kTexts);
    EXPECT_EQ(ordered(contents, {}), "Örjan|bo|Åsa|Ärla|Zoe|axel|");
    EXPECT_EQ(ordered(contents, {0, false}), "axel|bo|Zoe|Åsa|Ärla|Örjan|");
    EXPECT_EQ(ordered(contents, {2, false}), "Örjan|Åsa|Ärla|axel|Zoe|bo|"); // alike: as they came
    EXPECT_EQ(ordered(contents, {2, true}), "bo|Zoe|Åsa|Ärla|axel|Örjan|");
    EXPECT_EQ(ordered(contents, {4, false}), ordered(contents, {}));
    EXPECT_EQ(ordered(contents, {0, true}, "Å"), "Åsa|");
    EXPECT_EQ(ordered(contents, {2, true}, "20 kb"), "Åsa|Ärla|axel|");
    data.settings.mail_log_period = 30;
    data.settings.smtp_log_period = 100;
    const ListContents logs = listContents(node::Logs, data, kTexts);
    EXPECT_EQ(logs.cell(orderedRows(logs, {1, true}, {})[0], 1), "100");
}

TEST(ListExport, CellsKeepTheirPlaces) {
    const std::vector<TableRow> rows = {{"a\tb", "c\r\nd"}, {"1,234 kB", "say \"hi\""}};
    EXPECT_EQ(tabSeparated(rows), "a b\tc  d\n1,234 kB\tsay \"hi\"\n");
    EXPECT_EQ(commaSeparated(rows), "\xEF\xBB\xBF"
                                    "a\tb,\"c\r\nd\"\r\n\"1,234 kB\",\"say \"\"hi\"\"\"\r\n");
}

bool ended(TransportWatch& watch, const char* state, Long file_number = 0) {
    UucpStatusRecord record;
    record.state = state;
    record.file_number = file_number;
    return watch.hasEnded(record);
}

TEST(TransportWatch, TellsTheEndOnce) {
    TransportWatch watch;
    EXPECT_FALSE(ended(watch, "Idle") || ended(watch, "Dialing") || ended(watch, "Sending", 1));
    EXPECT_FALSE(watch.hasEnded(UucpStatusRecord())) << "no answer is no end";
    EXPECT_FALSE(ended(watch, "Dialing")) << "the next host is called";
    EXPECT_FALSE(ended(watch, "Sending", 2));
    EXPECT_TRUE(ended(watch, "Idle"));
    EXPECT_FALSE(ended(watch, "Idle"));
}

TEST(TransportWatch, AnUnknownStateThatStaysIsTheEnd) {
    TransportWatch watch; // the monitor was opened during a transport
    EXPECT_FALSE(ended(watch, "Sending", 5));
    for (int i = 1; i < TransportWatch::kQuietStatuses; ++i)
        EXPECT_FALSE(ended(watch, "Dialing") || ended(watch, "Logging in")) << "states that change";
    for (int i = 1; i < TransportWatch::kQuietStatuses; ++i)
        EXPECT_FALSE(ended(watch, "Resting")) << i;
    EXPECT_TRUE(ended(watch, "Resting"));
    EXPECT_FALSE(ended(watch, "Sending", 1));
    EXPECT_TRUE(ended(watch, "Resting")) << "known from then on";
    watch.reset();
    EXPECT_FALSE(ended(watch, "Resting"));
}

TEST(SpeedHistory, ForgetsWhatIsOlderThanItsSpan) {
    SpeedHistory history;
    history.add(0, 33'600);
    history.add(1, -5);
    history.add(SpeedHistory::kSpan, 1200);
    EXPECT_EQ(history.highest(), 33'600);
    history.add(SpeedHistory::kSpan + 0.5, 2400);
    EXPECT_EQ(history.samples().front().speed, 0);
    EXPECT_EQ(history.highest(), 2400);
}

} // namespace
} // namespace tollwick
