#include "ui/main/speed_history.h"
#include "ui/main/transport_watch.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

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
