#include "tests/support/error_of.h"
#include "tests/support/memory_settings_store.h"
#include "ui/main/window_placement.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

class WindowPlacementTest : public testing::Test {
protected:
    std::string& value(const std::string& name) {
        return store.values["tollwick\\environment\\" + name];
    }

    MemorySettingsStore store;
    Settings settings{store};
};

constexpr const char* kNames[] = {"windowxpos",  "windowypos",  "windowxsize",
                                  "windowysize", "windowstate", "splitterpos"};

TEST_F(WindowPlacementTest, IsRoundedAndHeldTo16BitsSaveForTheSplitter) {
    const std::pair<std::string_view, int> cases[] = {
        {"3000", 3000},     {" 12.5", 12},      {"13.5", 14},  {"-7.6 x", -8}, {"x", 0},
        {"-32768", -32768}, {"32767.4", 32767}, {"1e3", 1000}, {"12,000", 12}};
    for (const auto& [stored, read] : cases) {
        for (const char* name : kNames)
            value(name) = stored;
        const WindowPlacement placement = readPlacement(settings);
        for (const int number : {placement.left, placement.top, placement.width, placement.height,
                                 placement.splitter, placement.state})
            EXPECT_EQ(number, read) << stored;
    }
    for (const char* name : kNames)
        for (const char* number : {"32768", "-32769"}) {
            store.values.clear();
            value(name) = number;
            EXPECT_EQ(errorOf([&] { return readPlacement(settings); }),
                      name == std::string_view("splitterpos") ? 0 : error_number::Overflow)
                << name << ' ' << number;
        }
}

TEST_F(WindowPlacementTest, WhatIsStoredCanBeReadBack) {
    storePlacement(settings, {window_state::Maximized, -120, 45, 57'600, 32'400, 40'000});
    EXPECT_EQ(value("windowxpos"), "-120");
    EXPECT_EQ(value("windowxsize"), "32767");
    const WindowPlacement read = readPlacement(settings);
    EXPECT_EQ(read.state, window_state::Maximized);
    EXPECT_EQ(read.top, 45);
    EXPECT_EQ(read.height, 32'400);

    // Of a minimized window nothing else is stored.
    auto before = store.values;
    storePlacement(settings, {window_state::Minimized, 1, 2, 3, 4, 5});
    before["tollwick\\environment\\windowstate"] = "1";
    EXPECT_EQ(store.values, before);
}

TEST(WindowPlacement, OnlyTheDesignSizeAtZeroIsCentredAndTheSplitterKeepsItsMargins) {
    EXPECT_TRUE((WindowPlacement{0, -60, 60, 7110, 4455, 0}.isCentred())) << "their sum counts";
    EXPECT_FALSE((WindowPlacement{0, 0, 1, 7110, 4455, 0}.isCentred()));
    EXPECT_FALSE((WindowPlacement{0, 0, 0, 7440, 4455, 0}.isCentred()));
    EXPECT_FALSE((WindowPlacement{0, 0, 0, 7110, 4456, 0}.isCentred()));
    const struct {
        int position, window, dragged, laid_out;
    } cases[] = {{2985, 7440, 2985, 2985}, {0, 7440, 500, 1500},     {-300, 7440, 500, 1500},
                 {1499, 7440, 1499, 1500}, {7440, 7440, 6940, 5940}, {5941, 7440, 5941, 5940},
                 {2000, 2700, 2000, 1200}, {0, 2700, 500, 1200}};
    for (const auto& c : cases) {
        EXPECT_EQ(draggedSplitter(c.position, c.window), c.dragged) << c.position;
        EXPECT_EQ(laidOutSplitter(c.position, c.window), c.laid_out) << c.position;
    }
}

} // namespace
} // namespace tollwick
