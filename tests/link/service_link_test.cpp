// One exchange over a real socket, however the bytes, the clock and the other end behave.
#include "link/link_receiver.h"
#include "tests/link/support/console.h"

#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

#include <optional>

namespace tollwick {
namespace {

using script::answer;
using script::line;
using Acts = ScriptedPeer::Acts;
using Strings = std::vector<std::string>;

class ServiceLinkTest : public testing::Test {
protected:
    // The result code of a request that is numbered for the peer's list.
    Integer ask(Long number = 0) {
        console.link.comrecord = {50, 40, number, 0, {}};
        console.link.SendComrecord(console.link.comrecord);
        return console.link.WaitForReply();
    }
    [[nodiscard]] Long replyNumber() const { return console.link.comrecord.RecordNumber; }

    Console console;
    ServiceLink& link = console.link;
};

TEST_F(ServiceLinkTest, TakesAReplyInSingleBytes) {
    const ScriptedPeer peer({Acts{script::sendSingly(line(script::record(1, 9)))}});
    console.connectTo(peer);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(replyNumber(), 9);
}

TEST_F(ServiceLinkTest, CarriesAFullRecordBothWays) {
    Comrecord full{-1, -1, -1, -1, {}};
    full.ComrecordData.fill('\xFF');
    const ScriptedPeer peer({answer(full)});
    console.connectTo(peer);
    link.SendComrecord(full);
    EXPECT_EQ(link.WaitForReply(), -1);
    EXPECT_EQ(link.comrecord, full);
    EXPECT_EQ(peer.requests(), Strings{describe(full)});
}

TEST_F(ServiceLinkTest, TakesTheFirstOfTwoLinesInOneSegmentAndTheOtherAsTheNextArrival) {
    const ScriptedPeer peer(
        {Acts{script::send(line(script::record(1, 10)) + line(script::record(8, 11)))},
         answer(9, 12)});
    console.connectTo(peer);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(replyNumber(), 10);
    EXPECT_TRUE(waitUntil([&] { return replyNumber() == 11; }));
    // It arrived before this request was sent, so it is not its reply.
    EXPECT_EQ(ask(), 9);
    EXPECT_EQ(replyNumber(), 12);
}

TEST_F(ServiceLinkTest, GoesOnWaitingAfterAReplyWithoutAResult) {
    const std::string none = line(script::record(0, 10));
    const std::string one = line(script::record(1, 11));
    const ScriptedPeer peer({Acts{script::send(none + one)},
                             Acts{script::send(none), script::pause(30), script::send(one)},
                             Acts{script::send("\r\n" + none + none + one), script::close}});
    console.connectTo(peer);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ask(), 1);
        EXPECT_EQ(replyNumber(), 11);
    }
}

TEST_F(ServiceLinkTest, ReadsAnyLineAsSomeRecord) {
    const std::string garbage = "This is no line at all: \xE5\xFF \r \n!";
    Comrecord read;
    decodeLine(garbage, ScriptedPeer::kKey, read);
    ASSERT_NE(read.Operation, 0);
    const ScriptedPeer peer({Acts{script::send(garbage + "\r\n")}, answer(1, 5)});
    console.connectTo(peer);
    EXPECT_EQ(ask(), read.Operation);
    EXPECT_EQ(link.comrecord, read);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(replyNumber(), 5);
}

TEST_F(ServiceLinkTest, ClosesWhenALineIsLongerThanAnyValidOne) {
    const ScriptedPeer peer(
        {Acts{script::send(std::string(kMaxLineSize, 'A')), script::pause(30), script::send("A")}});
    console.connectTo(peer);
    EXPECT_EQ(ask(), result::NoReply);
    EXPECT_FALSE(link.isOpen());
    EXPECT_TRUE(waitUntil([&] { return peer.ended() == 1; }));
}

TEST_F(ServiceLinkTest, AReplyThatComesTooLateIsNotTakenForTheNext) {
    ScriptedPeer peer(
        {Acts{script::await, script::send(line(script::record(8, 10)))}, answer(1, 11)});
    console.connectTo(peer);
    link.setComTimeout(kShortTimeout);
    EXPECT_EQ(ask(), result::NoReply);
    EXPECT_TRUE(link.isOpen());
    EXPECT_FALSE(link.hasFailed()); // waiting in vain is no error of the socket
    EXPECT_EQ(link.lastErrorNumber(), 0);
    link.setComTimeout(30);
    peer.release();
    EXPECT_TRUE(waitUntil([&] { return replyNumber() == 10; }));
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(replyNumber(), 11);
}

TEST_F(ServiceLinkTest, DataWithoutARequestIsUnpackedAndForgotten) {
    ScriptedPeer peer({{.greeting = {script::send(ScriptedPeer::kKey), script::await,
                                     script::send(line(script::record(8, 10)))},
                        .answers = {answer(1, 11)}}});
    console.connectTo(peer);
    peer.release();
    EXPECT_TRUE(waitUntil([&] { return replyNumber() == 10; }));
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(replyNumber(), 11);
}

TEST_F(ServiceLinkTest, ASecondKeyIsReadAsALine) {
    const std::string second = "another-key-of-32-bytes-in-all!!";
    ASSERT_EQ(second.size(), kSessionKeySize);
    Comrecord read;
    decodeLine(second, ScriptedPeer::kKey, read);
    ASSERT_NE(read.Operation, 0);
    const ScriptedPeer peer(
        {Acts{script::send(second), script::pause(30), script::send("\r\n")}, answer(1, 11)});
    console.connectTo(peer);
    EXPECT_EQ(ask(1), read.Operation);
    EXPECT_EQ(ask(2), 1);
    EXPECT_EQ(replyNumber(), 11);
    // The peer could read both, so both were scrambled with the first key.
    EXPECT_EQ(peer.requests(), (Strings{"50/40 number 1 length 0", "50/40 number 2 length 0"}));
}

TEST_F(ServiceLinkTest, WithoutATimeOutLooksOnceAndReturns) {
    const ScriptedPeer peer({Acts{}});
    console.connectTo(peer);
    link.setComTimeout(0);
    EXPECT_EQ(ask(), result::NoReply);
    EXPECT_TRUE(link.isOpen());
    EXPECT_EQ(console.lock.times, 1);
    EXPECT_EQ(console.lock.depth, 0);
}

TEST_F(ServiceLinkTest, AWaitThatSpansMidnightGoesOn) {
    ScriptedPeer peer({Acts{script::await, script::send(line(script::record(1)))}, {}});
    console.connectTo(peer);
    link.setComTimeout(5);
    console.clock.set(23, 59, 50);
    QTimer::singleShot(0, &link, [&] {
        console.clock.set(0, 10, 0);
        peer.release();
    });
    EXPECT_EQ(ask(), 1);
    // Within one day the clock ends the wait.
    console.clock.set(12, 0, 0);
    QTimer::singleShot(0, &link, [&] { console.clock.set(12, 10, 0); });
    EXPECT_EQ(ask(), result::NoReply);
}

TEST_F(ServiceLinkTest, WithoutAConnectionAnswersAtOnce) {
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(ask(), result::NoReply);
    std::optional<ServiceLink::NoReply> reason;
    link.SendComrecord(link.comrecord);
    link.reportReply([&](std::optional<Integer> reply, ServiceLink::NoReply why) {
        EXPECT_FALSE(reply);
        reason = why;
    });
    EXPECT_EQ(reason, ServiceLink::NoReply::LinkClosed);
    EXPECT_LT(timer.elapsed(), 10'000); // of the 30 seconds for a reply
    EXPECT_EQ(console.lock.depth, 0);
}

TEST_F(ServiceLinkTest, LocksInputExactlyWhileItWaits) {
    ScriptedPeer peer({Acts{script::await, script::send(line(script::record(1)))}});
    console.connectTo(peer);
    EXPECT_EQ(console.lock.times, 0);
    int depth = -1;
    bool waiting = false;
    QTimer::singleShot(0, &link, [&] { // windows get their turn during the wait
        depth = console.lock.depth;
        waiting = link.isWaiting();
        peer.release();
    });
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(depth, 1);
    EXPECT_TRUE(waiting);
    EXPECT_EQ(console.lock.times, 1);
    EXPECT_EQ(console.lock.depth, 0);
    EXPECT_FALSE(link.isWaiting());
}

TEST_F(ServiceLinkTest, EndsTheWaitWhenTheOtherEndIsGone) {
    const std::string half = line(script::record(1, 5)).substr(0, 9);
    const Acts ends[] = {{script::close},
                         {script::reset},
                         {script::endSending},
                         {script::send(half), script::close},
                         {script::send(half), script::pause(30), script::reset}};
    for (const Acts& end : ends) {
        const ScriptedPeer peer({end});
        console.connectTo(peer);
        EXPECT_EQ(ask(), result::NoReply);
        EXPECT_FALSE(link.isOpen());
        EXPECT_EQ(link.KeyReceived(), 0);
        EXPECT_TRUE(waitUntil([&] { return peer.ended() == 1; }));
    }
    // Nothing of the half lines is left on a new connection.
    const ScriptedPeer peer({answer(1, 11)});
    console.connectTo(peer);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(replyNumber(), 11);
}

TEST_F(ServiceLinkTest, AReplyCountsWhenTheServiceClosesRightBehindIt) {
    for (const auto& end : {script::close, script::endSending}) {
        const ScriptedPeer peer({Acts{script::send(line(script::record(1, 11))), end}});
        for (int round = 0; round < 20; ++round) {
            console.connectTo(peer);
            EXPECT_EQ(ask(), 1);
            EXPECT_EQ(replyNumber(), 11);
        }
    }
}

TEST_F(ServiceLinkTest, AnIdleWaitSleeps) {
    QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 20; ++i)
        link.processEvents();
    EXPECT_GE(timer.elapsed(), 40);
}

} // namespace
} // namespace tollwick
