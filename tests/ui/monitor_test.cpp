#include "tests/ui/support/console_test.h"

#include <QSignalSpy>

namespace tollwick {
namespace {

using simulator::Server;

constexpr const char* kNoStatus =
    "Unable to get UUCP status from the Tollwick Service!\nThe connection is terminated!";
constexpr const char* kNoCommand =
    "Unable to send UUCP-command to the Tollwick Service!\nThe connection is terminated!";

class MonitorTest : public ConsoleTest {
protected:
    MonitorTest() { logInAndShow(); }

    void logInAndShow() {
        logIn();
        stopTimer();
        clickNode("uucpmonitor");
    }
    int polls() { return requestCount(ObjectClass::UucpStatus); }
    void tickTimes(int times) {
        for (int i = 0; i < times; ++i)
            tick();
    }
    // The second column, after as many ticks as bring a new status.
    std::string polled() {
        tickTimes(11);
        EXPECT_TRUE(waitUntil([this] { return !context().requests.isBusy(); }));
        std::string values;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            values += rowText(row).substr(rowText(row).find('|'));
        return values;
    }
};

TEST_F(MonitorTest, AsksOnEveryEleventhTickWhileItIsShown) {
    QSignalSpy changes(list().model(), &QAbstractItemModel::dataChanged);
    tickTimes(10);
    EXPECT_EQ(polls(), 0);
    tick();
    EXPECT_TRUE(waitUntil([this] { return polls() == 1 && !context().requests.isBusy(); }));
    EXPECT_EQ(changes.count(), 2) << "unchanged cells are not rewritten";
    EXPECT_EQ(polled(), "|Idle|12|0||0 kB|0 %|0 bps");
    EXPECT_EQ(polls(), 2);
    onServer([](Server& s) { s.site().outbox.pop_back(); });
    EXPECT_EQ(polled(), "|Idle|11|0||0 kB|0 %|0 bps");
    ASSERT_EQ(changes.count(), 3);
    EXPECT_EQ(changes.last().at(0).toModelIndex(), list().model()->index(1, 1));

    // The count goes on where it stood.
    tickTimes(5);
    clickNode("outbox");
    tickTimes(30);
    clickNode("uucpmonitor");
    tickTimes(5);
    EXPECT_EQ(polls(), 3);
    tick();
    EXPECT_TRUE(waitUntil([this] { return polls() == 4; }));
}

TEST_F(MonitorTest, ShowsATransportFromStartToCancel) {
    // 2.5 s to dial the first host, 0.8 s to log in, then a mail of 3,000 bytes.
    trigger("UucpTransportNowMenu");
    EXPECT_TRUE(polled().starts_with("|Dialing malmo|"));
    letTransportRun(2500);
    EXPECT_TRUE(polled().starts_with("|Logging in|"));
    letTransportRun(800);
    EXPECT_EQ(polled(), "|Sending|12|1|D.corv0A17|3 kB|0 %|0 bps");
    for (const char* command : {"Cancelmenu", "CancelUucpTransportMenu"}) {
        trigger(command); // the latter from any node
        clickNode("uucpmonitor");
        EXPECT_EQ(polled(), "|Cancelled|12|0||0 kB|0 %|0 bps");
        letTransportRun(3000);
        EXPECT_TRUE(polled().starts_with("|Idle|"));
        clickNode("schedule");
        trigger("UucpTransportNowMenu");
        EXPECT_TRUE(onServer([](Server& s) { return s.transport().isActive(); }));
    }
}

TEST_F(MonitorTest, ARefusedRequestEndsTheConnection) {
    for (const bool is_status : {true, false}) {
        refuse(is_status ? ObjectClass::UucpStatus : ObjectClass::UucpCommand);
        boxes.expectBox(kCritical, is_status ? kNoStatus : kNoCommand);
        is_status ? tickTimes(11) : trigger("CancelUucpTransportMenu");
        EXPECT_TRUE(waitUntil([this] { return boxes.done() && !context().link.isOpen(); }));
        EXPECT_EQ(tree().size(), 15U);
        tick();
        EXPECT_TRUE(isLoggedOut());
        window().menuTimer()->start();
        logInAndShow();
    }
}

TEST_F(MonitorTest, AStatusThatDoesNotComeIsWaitedForWithoutAWord) {
    neverReply(ObjectClass::UucpStatus);
    tickTimes(11);
    ASSERT_TRUE(waitUntil([this] { return polls() == 1; }));
    // The windows stay usable, and no tick sends another request.
    tickTimes(40);
    clickRow(3);
    EXPECT_TRUE(context().requests.isBusy());
    runOutOfTime();
    EXPECT_TRUE(waitUntil([this] { return !context().requests.isBusy(); }));
    EXPECT_TRUE(context().link.isOpen());
    EXPECT_EQ(polls(), 1);

    // A command waits for the status that is on its way. Both are lost with the connection; the
    // first box comes up, and is answered, while input is locked.
    tickTimes(11);
    ASSERT_TRUE(waitUntil([this] { return polls() == 2; }));
    boxes.expectBox(kCritical, kNoStatus);
    boxes.expectBox(kCritical, kNoCommand);
    inRequest([this] { trigger("UucpTransportNowMenu"); }, [this] { loseConnection(); });
    EXPECT_EQ(requestCount(ObjectClass::UucpCommand), 0);
    tick();
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(MonitorTest, ADroppedConnectionIsNoticedWithinATick) {
    select("uucphosts", 0);
    tick();
    loseConnection();
    ASSERT_TRUE(waitUntil([this] { return !context().link.isOpen(); }));
    EXPECT_EQ(info(), "Ready");
    EXPECT_EQ(tree().size(), 15U);
    tick();
    EXPECT_TRUE(tree().empty());
    EXPECT_EQ(info(), "Connection closed.");
    EXPECT_FALSE(action("DeleteMenu")->isEnabled());
    EXPECT_TRUE(isLoggedOut());
}

} // namespace
} // namespace tollwick
