// What the console keeps from one start to the next.
#include "base/settings_store.h"
#include "rules/list_layout.h"
#include "rules/recent_servers.h"
#include "rules/window_placement.h"
#include "tests/support/memory_settings_store.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

class SettingsTest : public testing::Test {
protected:
    MemorySettingsStore store;
    Settings settings{store};
};

TEST_F(SettingsTest, BlankValuesReadAsTheDefaultAndAFailedWriteIsLost) {
    using namespace std::string_literals;
    settings.write(setting::ServerConnectPort, "");
    std::string& stored = store.values.at("tollwick\\general\\serverconnectport");
    EXPECT_EQ(stored, " ");
    for (const std::string& blank : {""s, "  "s, " \0 "s, "\0x"s}) {
        stored = blank;
        EXPECT_EQ(settings.read(setting::ServerConnectPort), "542") << '"' << blank << '"';
    }
    stored = " 25 \0 26"s;
    store.writable = false;
    settings.write(setting::ServerConnectPort, "110");
    EXPECT_EQ(settings.read(setting::ServerConnectPort), " 25 ");
}

TEST_F(SettingsTest, AWidthIsHeldTo16BitsAndTheSplitterIsReadBeyondThem) {
    storePlacement(settings, {window_state::Normal, -120, 45, 57'600, 32'400, 40'000});
    const WindowPlacement read = readPlacement(settings);
    EXPECT_EQ(std::tuple(read.left, read.width), std::tuple(-120, 32'767));
    store.values["tollwick\\environment\\splitterpos"] = "40000";
    EXPECT_EQ(readPlacement(settings).splitter, 40'000);
}

TEST(WindowPlacement, AWindowThatCannotBeGrabbedIsMovedOntoTheFirstScreen) {
    const std::vector<ScreenArea> screens = {{0, 300, 15000, 9000}, {15000, 0, 9000, 6000}};
    // Left, top, width and height, and what becomes of them.
    const std::pair<std::array<int, 4>, std::array<int, 4>> cases[] = {
        {{14000, 5000, 9000, 6000}, {14000, 5000, 9000, 6000}}, // on both
        {{-7800, 400, 9000, 6000}, {-7800, 400, 9000, 6000}},
        {{-7810, 400, 9000, 6000}, {0, 400, 9000, 6000}},
        {{23950, 0, 9000, 6000}, {6000, 300, 9000, 6000}},
        {{100, 0, 9000, 6000}, {100, 300, 9000, 6000}}, // its title is above the screen
        {{100, 9200, 20000, 20000}, {0, 300, 15000, 9000}}};
    for (const auto& [b, a] : cases) {
        const WindowPlacement kept = keptOnScreen({0, b[0], b[1], b[2], b[3], 0}, screens);
        EXPECT_EQ((std::array{kept.left, kept.top, kept.width, kept.height}), a) << b[0];
    }
    EXPECT_EQ(keptOnScreen({0, -9000, 0, 100, 100, 0}, {}).left, -9000) << "no screen";
}

TEST(WindowPlacement, OnlyTheDesignSizeAtZeroIsCentredAndTheSplitterKeepsItsMargins) {
    EXPECT_TRUE((WindowPlacement{0, -60, 60, 7110, 4455, 0}.isCentred())) << "their sum counts";
    EXPECT_FALSE((WindowPlacement{0, 0, 1, 7110, 4455, 0}.isCentred()));
    EXPECT_FALSE((WindowPlacement{0, 0, 0, 7440, 4455, 0}.isCentred()));
    const struct {
        int position, window, dragged, laid_out;
    } cases[] = {{1500, 7440, 1500, 1500},
                 {-300, 7440, 510, 1500},
                 {7440, 7440, 6930, 5940},
                 {2000, 2700, 1995, 1200},
                 {0, 2700, 510, 1200}};
    for (const auto& c : cases) {
        EXPECT_EQ(draggedSplitter(c.position, c.window), c.dragged) << c.position;
        EXPECT_EQ(laidOutSplitter(c.position, c.window), c.laid_out) << c.position;
    }
}

TEST_F(SettingsTest, TheLastTenServersAreKeptWithoutDoublesLatestFirst) {
    for (const char* host : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "5"})
        rememberServer(settings, {host, "542", "admin"});
    rememberServer(settings, {"5", "543", "åsa|b"});
    rememberServer(settings, {"a|b", "1", "x"}); // could not be read back
    std::string servers;
    for (const RecentServer& each : readRecentServers(settings))
        servers += each.host + ':' + each.port + ':' + each.user + ' ';
    EXPECT_EQ(servers, "5:543:åsa|b 5:542:admin 10:542:admin 9:542:admin 8:542:admin 7:542:admin "
                       "6:542:admin 4:542:admin 3:542:admin 2:542:admin ");
    settings.write({"Servers", "Server1", ""}, "no separator");
    settings.write({"Servers", "Server2", ""}, "::1|542|");
    EXPECT_EQ(readRecentServers(settings)[0], (RecentServer{"::1", "542", ""}));
}

TEST_F(SettingsTest, ALayoutIsKeptForEachListAndABadOneIsNone) {
    storeListLayout(settings, "outbox", {{1500, 900, 450, 3000}, {2, true}});
    const ListLayout kept = readListLayout(settings, "outbox", 4);
    EXPECT_EQ(kept.widths, (std::vector{1500, 900, 450, 3000}));
    EXPECT_EQ(kept.sort, (ListSort{2, true}));
    EXPECT_TRUE(readListLayout(settings, "schedule", 4).widths.empty());
    // Another number of columns than when it was stored, and what is no number.
    EXPECT_TRUE(readListLayout(settings, "outbox", 3).widths.empty());
    EXPECT_EQ(readListLayout(settings, "outbox", 2).sort, ListSort());
    for (const char* bad : {"100 x", "1 2 3 4 5", "99999999999 1 1 1", "1 2 3 4 -"}) {
        settings.write({"Lists", "outboxWidths", ""}, bad);
        settings.write({"Lists", "outboxSort", ""}, bad);
        EXPECT_TRUE(readListLayout(settings, "outbox", 4).widths.empty()) << bad;
        EXPECT_EQ(readListLayout(settings, "outbox", 4).sort, ListSort()) << bad;
    }
    settings.write({"Lists", "outboxWidths", ""}, "-5 0 999999 300");
    EXPECT_EQ(readListLayout(settings, "outbox", 4).widths, (std::vector{150, 150, 60000, 300}));
}

} // namespace
} // namespace tollwick
