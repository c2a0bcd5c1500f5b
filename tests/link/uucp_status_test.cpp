// The monitor's poll, whose reply is not waited for.
#include "tests/link/support/console.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using script::answer;
using Acts = ScriptedPeer::Acts;
using Strings = std::vector<std::string>;

constexpr const char* kStatusFailure = "Unable to get UUCP status from the Tollwick Service!";
constexpr const char* kCommandFailure = "Unable to send UUCP-command to the Tollwick Service!";

class UucpStatus : public testing::Test {
protected:
    void poll() {
        console.requests.txGetUucpStatus([this](int value) { reports.push_back(value); });
    }
    bool reported() {
        return waitUntil([this] { return !reports.empty(); });
    }
    static std::string status(Long queued_files) {
        UucpStatusRecord record;
        record.queued_files = queued_files;
        record.state = "Sending";
        return script::line(script::recordWith(record, 123));
    }

    Console console;
    std::vector<int> reports;
};

TEST_F(UucpStatus, IsBlankUntilTheReplyComesAndLocksNothing) {
    const std::string no_result = script::line(script::record(0));
    const ScriptedPeer peer({Acts{script::send(no_result + status(3))}});
    console.connectTo(peer);
    console.data.uucp_status.queued_files = 8;
    poll();
    EXPECT_EQ(console.data.uucp_status, UucpStatusRecord());
    EXPECT_TRUE(console.requests.isBusy());
    EXPECT_TRUE(reported());
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    EXPECT_EQ(console.data.uucp_status.queued_files, 3);
    EXPECT_EQ(console.data.uucp_status.state.text(), "Sending");
    EXPECT_FALSE(console.requests.isBusy());
    EXPECT_EQ(console.lock.times, 0);
}

TEST_F(UucpStatus, TimesOutSilentlyAndItsLateReplyIsNobodys) {
    ScriptedPeer peer({Acts{script::await, script::send(status(3))}, answer(1, 7)});
    console.connectTo(peer);
    console.link.setComTimeout(kShortTimeout);
    poll();
    EXPECT_TRUE(reported());
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    EXPECT_EQ(console.data.uucp_status, UucpStatusRecord());

    console.link.setComTimeout(30);
    peer.release();
    EXPECT_TRUE(waitUntil([this] { return console.link.comrecord.RecordNumber == 123; }));
    EXPECT_EQ(console.requests.txSendUucpCommand(), 7);
    EXPECT_EQ(reports.size(), 1u);
}

TEST_F(UucpStatus, IsAbandonedSilentlyWhenTheConsoleClosesTheLink) {
    const ScriptedPeer peer({Acts{}});
    console.connectTo(peer);
    poll();
    console.link.Close();
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    EXPECT_FALSE(console.requests.isBusy());
    EXPECT_TRUE(waitUntil([&] { return peer.ended() == 1; }));
    EXPECT_EQ(reports.size(), 1u);
}

TEST_F(UucpStatus, AndAnotherRequestEachGetTheirOwnReply) {
    const ScriptedPeer peer({Acts{script::pause(50), script::send(status(3))}, answer(1, 7)});
    console.connectTo(peer);
    poll();
    EXPECT_EQ(console.requests.txSendUucpCommand(), 7);
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    EXPECT_EQ(console.data.uucp_status.queued_files, 3);
    EXPECT_EQ(peer.requests(), (Strings{"50/140 number 0 length 0", "20/150 number 0 length 4"}));
    EXPECT_EQ(console.lock.depth, 0);
}

TEST_F(UucpStatus, WithoutAReplyHoldsAnotherRequestUpForTheTimeOutOnly) {
    const ScriptedPeer peer({Acts{}, answer(1, 7)});
    console.connectTo(peer);
    console.link.setComTimeout(kShortTimeout);
    console.requests.txGetUucpStatus([this](int value) {
        reports.push_back(value);
        console.link.setComTimeout(30);
    });
    EXPECT_EQ(console.requests.txSendUucpCommand(), 7);
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    EXPECT_EQ(console.lock.depth, 0);
}

TEST_F(UucpStatus, ThatFailsUnderAnotherRequestFailsBothOnce) {
    for (const Acts& end : {answer(2), Acts{script::close}}) {
        reports.clear();
        const ScriptedPeer peer({end, answer(1, 7)});
        console.connectTo(peer);
        poll();
        console.expectFailure(kStatusFailure);
        console.expectFailure(kCommandFailure);
        EXPECT_EQ(console.requests.txSendUucpCommand(), result::NoReply);
        EXPECT_EQ(reports, std::vector{kStatusFailed});
        EXPECT_TRUE(console.prompter.done());
        EXPECT_EQ(console.lock.depth, 0);
    }
}

TEST_F(UucpStatus, CountsWhenTheServiceClosesRightBehindIt) {
    const ScriptedPeer peer({Acts{script::send(status(3)), script::close}});
    console.connectTo(peer);
    poll();
    EXPECT_TRUE(reported());
    EXPECT_EQ(reports, std::vector{kStatusReceived});
    EXPECT_EQ(console.data.uucp_status.queued_files, 3);
    EXPECT_TRUE(waitUntil([this] { return !console.link.isOpen(); }));
    EXPECT_EQ(reports.size(), 1u);
}

} // namespace
} // namespace tollwick
