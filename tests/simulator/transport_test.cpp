#include "simulator/sample_site.h"
#include "simulator/transport.h"

#include <gtest/gtest.h>

#include <set>

namespace tollwick::simulator {
namespace {

using namespace std::chrono_literals;

class TransportTest : public testing::Test {
protected:
    void addMail(const char* node, const char* file_name, Long size) {
        site.outbox.push_back({VarText("a@x"), VarText(node), VarText(file_name), VarText(), size});
    }
    void addHost(const char* node, Integer connect_using, Integer active = kTrue) {
        HostRecord& host = site.hosts.emplace_back();
        host.remote_uucp_name = node;
        host.connect_using = connect_using;
        host.active = active;
    }
    std::string stateAfter(std::chrono::milliseconds time) {
        now += time;
        transport.advance();
        return transport.status().state.text();
    }

    Site site;
    std::chrono::milliseconds now{1000};
    Transport transport{site, [this] { return now; }};
};

TEST_F(TransportTest, GoesFromHostToHostAndEmptiesTheOutbox) {
    addHost("malmo", 0);
    addHost("sthlm", 2);
    addMail("malmo", "D.1", 3);
    addMail("sthlm", "D.2", 10);
    addMail("MALMO", "D.3", 3); // spelled otherwise, it takes a call of its own

    EXPECT_EQ(stateAfter(0ms), "Idle");
    transport.start();
    EXPECT_EQ(stateAfter(2499ms), "Dialing malmo");
    EXPECT_EQ(stateAfter(1ms), "Logging in");
    EXPECT_EQ(stateAfter(800ms), "Sending");
    const UucpStatusRecord first = transport.status();
    EXPECT_EQ(first.queued_files, 3);
    EXPECT_EQ(first.file_number, 1);
    EXPECT_EQ(first.file_name.text(), "D.1");
    EXPECT_EQ(first.file_size, 3000);
    EXPECT_EQ(first.percent, 0);

    // 3000 bytes of 10 bits at 97 hundredths of 33600 bits per second
    EXPECT_EQ(stateAfter(919ms), "Sending");
    EXPECT_EQ(transport.status().percent, 99);
    EXPECT_EQ(stateAfter(1ms), "Closing");
    EXPECT_EQ(transport.status().queued_files, 2);
    EXPECT_EQ(transport.status().file_name.text(), "");
    EXPECT_EQ(stateAfter(500ms), "Connecting to sthlm");

    // A clock that jumps passes through everything that is left.
    now += 1h;
    EXPECT_TRUE(transport.advance());
    EXPECT_TRUE(site.outbox.empty());
    EXPECT_EQ(transport.status().state.text(), "Idle");
    EXPECT_FALSE(transport.isActive());
}

TEST_F(TransportTest, CancelLeavesTheMailThatIsBeingSent) {
    addMail("unknown", "D.1", 100);
    addMail("unknown", "D.2", 100);
    transport.cancel(); // nothing runs
    EXPECT_EQ(stateAfter(0ms), "Idle");

    transport.start();
    EXPECT_EQ(stateAfter(40s), "Sending");
    EXPECT_EQ(site.outbox.size(), 1U);
    transport.start(); // runs already
    EXPECT_EQ(transport.status().file_number, 2);
    transport.cancel();
    EXPECT_EQ(stateAfter(2999ms), "Cancelled");
    EXPECT_EQ(stateAfter(1ms), "Idle");
    EXPECT_EQ(site.outbox.size(), 1U);
}

TEST_F(TransportTest, EndsAtOnceWithNothingToSend) {
    transport.start();
    EXPECT_EQ(stateAfter(0ms), "No mail to send");
    EXPECT_EQ(stateAfter(3s), "Idle");
    addHost("are", 0, kFalse);
    addMail("are", "D.1", 1);
    transport.start();
    EXPECT_EQ(stateAfter(0ms), "No mail to send") << "its host is not activated";
    EXPECT_EQ(transport.status().queued_files, 1);
}

TEST_F(TransportTest, StandsMailThatVanishesOrHasOddSizes) {
    addMail("x", "D.1", 5);
    addMail("x", "D.2", -7);
    addMail("x", "D.3", std::numeric_limits<Long>::max());
    transport.start();
    EXPECT_EQ(stateAfter(3500ms), "Sending");
    site.outbox.erase(site.outbox.begin()); // deleted by a console meanwhile
    stateAfter(3s);
    EXPECT_EQ(transport.status().file_number, 3);
    EXPECT_EQ(transport.status().file_size, std::numeric_limits<Long>::max());
    EXPECT_EQ(site.outbox.size(), 1U);
}

TEST_F(TransportTest, SampleTakesAboutTwentySecondsAndMovesPlausibly) {
    site = sampleSite();
    transport.start();
    const std::chrono::milliseconds start = now;
    std::set<Long> speeds;
    Long file_number = 0;
    Integer percent = 0;
    while (stateAfter(100ms) != "Finished") {
        ASSERT_LT(now - start, 60s);
        const UucpStatusRecord status = transport.status();
        if (status.file_number == 0)
            continue;
        EXPECT_GE(status.file_number, file_number);
        if (status.file_number == file_number) {
            EXPECT_GE(status.percent, percent);
        }
        file_number = status.file_number;
        percent = status.percent;
        if (status.average_speed > 0) {
            speeds.insert(status.average_speed);
            EXPECT_GT(status.average_speed, 20'000);
            EXPECT_LT(status.average_speed, 350'000);
        }
    }
    EXPECT_EQ(file_number, 12);
    EXPECT_TRUE(site.outbox.empty());
    EXPECT_GT(speeds.size(), 20U);
    EXPECT_GT(now - start, 15s);
    EXPECT_LT(now - start, 25s);
}

} // namespace
} // namespace tollwick::simulator
