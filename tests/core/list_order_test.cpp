#include "tests/support/memory_settings_store.h"
#include "ui/main/list_export.h"
#include "ui/main/list_layout.h"
#include "ui/main/list_order.h"
#include "ui/main/node_keys.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

const StringTable kTexts(kEnglish);

// The first cells of the rows that are left, in their order.
std::string ordered(const ListContents& contents, ListSort sort, std::string_view filter = {}) {
    std::string cells;
    for (const std::size_t row : orderedRows(contents, sort, filter))
        cells += (cells.empty() ? "" : " ") + contents.cell(row, 0);
    return cells;
}

TEST(ListOrder, MailsSortBySizeAndByAlphabet) {
    ServiceData data;
    const struct {
        const char* to;
        Long size;
    } mails[] = {{"Örjan", 9}, {"bo", 1000}, {"Åsa", 20}, {"Ärla", 20}, {"Zoe", 300}, {"axel", 20}};
    for (const auto& mail : mails) {
        OutboxRecord record;
        record.recipient = mail.to;
        record.size = mail.size;
        data.outbox.push_back(record);
    }
    const ListContents contents = listContents(node::Outbox, data, kTexts);
    EXPECT_EQ(ordered(contents, {}), "Örjan bo Åsa Ärla Zoe axel");
    EXPECT_EQ(ordered(contents, {0, false}), "axel bo Zoe Åsa Ärla Örjan");
    EXPECT_EQ(ordered(contents, {0, true}), "Örjan Ärla Åsa Zoe bo axel");
    EXPECT_EQ(ordered(contents, {2, false}), "Örjan Åsa Ärla axel Zoe bo"); // alike: as they came
    EXPECT_EQ(ordered(contents, {2, true}), "bo Zoe Åsa Ärla axel Örjan");
    EXPECT_EQ(ordered(contents, {4, false}), ordered(contents, {}));
    EXPECT_EQ(ordered(contents, {0, false}, "ÅS"), "Åsa");
    EXPECT_EQ(ordered(contents, {2, true}, "20 kb"), "Åsa Ärla axel");
    EXPECT_EQ(ordered(contents, {}, "nobody"), "");
}

TEST(ListOrder, SchedulesSortByDayAndTime) {
    ServiceData data;
    const struct {
        Integer day, timed;
        const char* at;
        Integer interval, delay;
        const char* first;
    } schedules[] = {{4, 1, "9:05", 0, 5, "10:00"}, // Friday
                     {0, 1, "10:00", 0, 20, ""},    // Monday
                     {9, 0, "", 9, 100, "9:30"},    // Every day, 12 hours
                     {6, 0, "", 0, -1, "00:00"}};   // Sunday, 5 minutes
    for (const auto& s : schedules) {
        ScheduleRecord record;
        record.day = s.day;
        record.timed = s.timed;
        record.at_time = s.at;
        record.interval = s.interval;
        record.delay = s.delay;
        record.between_first = s.first;
        data.schedules.push_back(record);
    }
    const ListContents contents = listContents(node::Schedule, data, kTexts);
    EXPECT_EQ(ordered(contents, {0, false}), "Monday Friday Sunday Every day");
    EXPECT_EQ(ordered(contents, {1, false}), "Friday Monday Sunday Every day");
    EXPECT_EQ(ordered(contents, {2, false}), "Monday Sunday Every day Friday");
    EXPECT_EQ(ordered(contents, {3, false}), "Sunday Friday Monday Every day");
}

TEST(ListOrder, LogPeriodsSortAsNumbers) {
    ServiceData data;
    data.settings.mail_log_period = 30;
    data.settings.uucp_transfer_log_period = 7;
    data.settings.smtp_log_period = 100;
    const ListContents contents = listContents(node::Logs, data, kTexts);
    const std::vector<std::size_t> rows = orderedRows(contents, {1, true}, {});
    EXPECT_EQ(contents.cell(rows[0], 1), "100");
    EXPECT_EQ(contents.cell(rows[1], 1), "30");
    EXPECT_EQ(contents.cell(rows[2], 1), "7");
}

TEST(ListLayout, IsKeptForEachListAndBadOnesAreNone) {
    MemorySettingsStore store;
    Settings settings(store);
    storeListLayout(settings, "outbox", {{1500, 900, 450, 3000}, {2, true}});
    const ListLayout kept = readListLayout(settings, "outbox", 4);
    EXPECT_EQ(kept.widths, (std::vector{1500, 900, 450, 3000}));
    EXPECT_EQ(kept.sort, (ListSort{2, true}));
    const ListLayout other = readListLayout(settings, "schedule", 4);
    EXPECT_TRUE(other.widths.empty());
    EXPECT_EQ(other.sort, ListSort());
    // Another number of columns than when it was stored, and what is no number.
    EXPECT_TRUE(readListLayout(settings, "outbox", 3).widths.empty());
    EXPECT_EQ(readListLayout(settings, "outbox", 2).sort, ListSort());
    for (const char* bad : {"wide", "100 x", "1 2 3 4 5", "99999999999 1 1 1",
                            "1 2 3 4 99999999999", "1 2 3 4 -", "1 0 -"}) {
        settings.write({"Lists", "outboxWidths", ""}, bad);
        settings.write({"Lists", "outboxSort", ""}, bad);
        EXPECT_TRUE(readListLayout(settings, "outbox", 4).widths.empty()) << bad;
        EXPECT_EQ(readListLayout(settings, "outbox", 4).sort, ListSort()) << bad;
    }
    settings.write({"Lists", "outboxWidths", ""}, "-5 0 999999 300");
    EXPECT_EQ(readListLayout(settings, "outbox", 4).widths, (std::vector{150, 150, 60000, 300}));
}

TEST(ListExport, CellsKeepTheirPlaces) {
    const std::vector<TableRow> rows = {{"a\tb", "c\r\nd"}, {"1,234 kB", "say \"hi\""}};
    EXPECT_EQ(tabSeparated(rows), "a b\tc  d\n1,234 kB\tsay \"hi\"\n");
    EXPECT_EQ(commaSeparated(rows), "\xEF\xBB\xBF"
                                    "a\tb,\"c\r\nd\"\r\n\"1,234 kB\",\"say \"\"hi\"\"\"\r\n");
}

} // namespace
} // namespace tollwick
