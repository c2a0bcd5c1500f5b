// One exchange over a real socket, however the bytes, the clock and the other end behave.
#include "tests/link/support/console.h"
#include "wire/link_receiver.h"

#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace tollwick {
namespace {

using script::Acts;
using script::answer;
using script::line;

class ServiceLinkTest : public testing::Test {
protected:
    // Asks, and tells the result code and the number of the reply, such as "1 from 10".
    std::string ask(Long number = 0) {
        link.comrecord = {50, 40, number, 0, {}};
        link.SendComrecord(link.comrecord);
        const Integer result = link.WaitForReply();
        return std::to_string(result) + " from " + std::to_string(link.comrecord.RecordNumber);
    }
    bool arrives(Long number) {
        return waitUntil([&] { return link.comrecord.RecordNumber == number; });
    }

    Console console;
    ServiceLink& link = console.link;
};

TEST_F(ServiceLinkTest, WaitsForItsTimeOutOnlyAndPastMidnight) {
    ScriptedPeer peer({Acts{script::await, script::send(line(script::record(1)))}, {}});
    console.connectTo(peer);
    link.setComTimeout(5);
    console.clock.time = {1999, 3, 7, 23, 59, 50, 0};
    QTimer::singleShot(0, &link, [&] {
        console.clock.time = {1999, 3, 8, 0, 10, 0, 0};
        peer.release();
    });
    EXPECT_EQ(ask(), "1 from 0");
    // Within one day the clock ends the wait.
    QTimer::singleShot(0, &link, [&] { console.clock.time.second = 5; });
    QTimer::singleShot(50, &link, [&] { console.clock.time.hundredths = 1; });
    EXPECT_EQ(ask(), "-1 from 0");
    EXPECT_EQ(console.clock.time.hundredths, 1);

    QElapsedTimer idle; // a wait sleeps
    idle.start();
    for (int i = 0; i < 20; ++i)
        link.runUntil([once = false]() mutable { return std::exchange(once, true); });
    EXPECT_GE(idle.elapsed(), 40);
}

TEST_F(ServiceLinkTest, EndsTheWaitWhenTheLinkIsGone) {
    EXPECT_EQ(ask(), "-1 from 0"); // never connected
    {
        const std::string half = line(script::record(1, 5)).substr(0, 9);
        const ScriptedPeer peer(std::vector<Acts>{{script::send(half), script::close}});
        console.connectTo(peer);
        EXPECT_EQ(ask(), "-1 from 0");
        EXPECT_FALSE(link.isOpen());
        EXPECT_EQ(link.KeyReceived(), 0);
    }
    // Nothing of the half line is left on a new connection, and a reply counts when the service
    // closes right behind it.
    for (const auto& end : {script::close, script::endSending}) {
        const ScriptedPeer peer(
            std::vector<Acts>{Acts{script::send(line(script::record(1, 11))), end}});
        for (int round = 0; round < 20; ++round) {
            console.connectTo(peer);
            EXPECT_EQ(ask(), "1 from 11");
        }
    }
}

// The monitor's poll, whose reply is not waited for.
class UucpStatusTest : public testing::Test {
protected:
    UucpStatusTest() {
        status.queued_files = 3;
        status.state = "Sending";
        reply = line(script::recordWith(status, 123));
    }
    void poll() {
        console.requests.txGetUucpStatus([this](int value) { reports.push_back(value); });
    }
    bool reported() {
        return waitUntil([this] { return !reports.empty(); });
    }

    UucpStatusRecord status;
    std::string reply;
    Console console;
    std::vector<int> reports;
};

TEST_F(UucpStatusTest, IsBlankUntilTheReplyComesAndLocksNothing) {
    const ScriptedPeer peer(
        std::vector<Acts>{Acts{script::send(line(script::record(0)) + reply), script::close}});
    console.connectTo(peer);
    console.data.uucp_status.queued_files = 8;
    poll();
    EXPECT_EQ(console.data.uucp_status, UucpStatusRecord());
    EXPECT_TRUE(console.requests.isBusy());
    EXPECT_TRUE(reported());
    EXPECT_EQ(console.data.uucp_status, status);
    EXPECT_FALSE(console.requests.isBusy());
    EXPECT_EQ(console.lock.times, 0);
    EXPECT_TRUE(waitUntil([this] { return !console.link.isOpen(); }));
    EXPECT_EQ(reports, std::vector{kStatusReceived}); // once
}

TEST_F(UucpStatusTest, TimesOutSilentlyAndItsLateReplyIsNobodys) {
    ScriptedPeer peer({Acts{script::await, script::send(reply)}, answer(1, 7), Acts{}});
    console.connectTo(peer);
    console.link.setComTimeout(kNoTime);
    poll();
    EXPECT_TRUE(reported());
    EXPECT_EQ(console.data.uucp_status, UucpStatusRecord());
    console.link.setComTimeout(30);
    peer.release();
    EXPECT_TRUE(waitUntil([this] { return console.link.comrecord.RecordNumber == 123; }));
    EXPECT_EQ(console.requests.txSendUucpCommand(), 7);
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    poll(); // abandoned as silently when the console closes the link
    console.link.Close();
    EXPECT_EQ(reports, std::vector(2, kStatusReceived));
    EXPECT_FALSE(console.requests.isBusy());
    EXPECT_TRUE(waitUntil([&] { return peer.ended() == 1; }));
    EXPECT_EQ(reports.size(), 2U);
}

TEST_F(UucpStatusTest, AndAnotherRequestEachGetTheirOwnReply) {
    ScriptedPeer peer({Acts{script::await, script::send(reply)}, answer(1, 7)});
    console.connectTo(peer);
    poll();
    QTimer::singleShot(0, &console.link, [&peer] { peer.release(); });
    EXPECT_EQ(console.requests.txSendUucpCommand(), 7);
    EXPECT_EQ(console.data.uucp_status, status);
    EXPECT_EQ(peer.requests(), (Strings{"50/140 number 0 length 0", "20/150 number 0 length 4"}));
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    EXPECT_EQ(console.lock.depth, 0);
}

// After a poll without a reply another one tells where the service has got to: its late replies, or
// those that it has dropped, are nobody's.
TEST_F(UucpStatusTest, ThatCameToNothingIsCaughtUpWithBeforeTheNextRequest) {
    const Acts silence;
    const Acts late{script::send(reply), script::send(reply)};
    const Strings caught_up{"50/140 number 0 length 0", "50/140 number 0 length 0",
                            "20/150 number 0 length 4"};
    for (const bool is_late : {true, false}) {
        reports.clear();
        const ScriptedPeer peer(
            {silence, is_late ? late : Acts{script::send(reply)}, answer(1, 8), answer(1, 9)});
        console.connectTo(peer);
        console.link.setComTimeout(kNoTime);
        poll();
        EXPECT_TRUE(reported());
        EXPECT_TRUE(console.link.isOwed());
        console.link.setComTimeout(30);
        EXPECT_EQ(console.requests.txSendUucpCommand(), 8);
        EXPECT_EQ(peer.requests(),
                  (Strings{caught_up[0].substr(0, 24), caught_up[1], caught_up[2]}));
        EXPECT_FALSE(console.link.isOwed());
        EXPECT_EQ(console.requests.txSendUucpCommand(), 9) << "without a poll before it";
        EXPECT_EQ(console.lock.depth, 0);
    }
    const ScriptedPeer peer({silence, silence, answer(1, 8)});
    console.connectTo(peer);
    console.link.setComTimeout(kNoTime);
    poll();
    EXPECT_TRUE(reported());
    console.expectFailure("Unable to send UUCP-command to the Tollwick Service!");
    EXPECT_EQ(console.requests.txSendUucpCommand(), result::NoReply);
    EXPECT_FALSE(console.link.isOpen());
}

TEST_F(UucpStatusTest, ThatFailsUnderAnotherRequestEndsBothWithOneBox) {
    const struct {
        Acts end;
        const char* told;
        int reported;
    } cases[] = {
        {answer(2), "Unable to get UUCP status from the Tollwick Service!", kStatusFailed},
        {{script::close}, "Unable to send UUCP-command to the Tollwick Service!", kStatusReceived}};
    for (const auto& c : cases) {
        reports.clear();
        const ScriptedPeer peer({c.end, answer(1, 7)});
        console.connectTo(peer);
        poll();
        console.expectFailure(c.told);
        EXPECT_EQ(console.requests.txSendUucpCommand(), result::NoReply);
        EXPECT_EQ(reports, std::vector{c.reported});
        EXPECT_TRUE(console.prompter.done());
        EXPECT_EQ(console.lock.depth, 0);
    }
}

} // namespace
} // namespace tollwick
