#include "ui/main/speed_history.h"
#include "ui/main/transport_watch.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

UucpStatusRecord status(const char* state, Long file_number = 0) {
    UucpStatusRecord record;
    record.state = state;
    record.file_number = file_number;
    return record;
}

TEST(TransportWatch, TellsTheEndOnce) {
    TransportWatch watch;
    for (const auto& before : {status("Idle"), status("Dialing"), status("Sending", 1)})
        EXPECT_FALSE(watch.hasEnded(before));
    EXPECT_FALSE(watch.hasEnded(UucpStatusRecord())) << "no answer is no end";
    EXPECT_FALSE(watch.hasEnded(status("Dialing"))) << "the next host is called";
    EXPECT_FALSE(watch.hasEnded(status("Sending", 2)));
    EXPECT_TRUE(watch.hasEnded(status("Idle")));
    EXPECT_FALSE(watch.hasEnded(status("Idle")));
    EXPECT_FALSE(watch.hasEnded(status("Sending", 1)));
    EXPECT_TRUE(watch.hasEnded(status("Idle")));
}

TEST(TransportWatch, AnUnknownStateThatStaysIsTheEnd) {
    TransportWatch watch; // the monitor was opened during a transport
    EXPECT_FALSE(watch.hasEnded(status("Sending", 5)));
    for (int i = 1; i < TransportWatch::kQuietStatuses; ++i)
        EXPECT_FALSE(watch.hasEnded(status("Resting"))) << i;
    EXPECT_TRUE(watch.hasEnded(status("Resting")));
    EXPECT_FALSE(watch.hasEnded(status("Sending", 1)));
    EXPECT_TRUE(watch.hasEnded(status("Resting"))) << "known from then on";
    watch.reset();
    EXPECT_FALSE(watch.hasEnded(status("Resting")));
}

TEST(SpeedHistory, ForgetsWhatIsOlderThanItsSpan) {
    SpeedHistory history;
    history.add(0, 33'600);
    history.add(1, -5);
    history.add(SpeedHistory::kSpan, 1200);
    EXPECT_EQ(history.samples().size(), 3U);
    EXPECT_EQ(history.highest(), 33'600);
    history.add(SpeedHistory::kSpan + 0.5, 2400);
    EXPECT_EQ(history.samples().size(), 3U);
    EXPECT_EQ(history.samples().front().speed, 0);
    EXPECT_EQ(history.highest(), 2400);
}

} // namespace
} // namespace tollwick
