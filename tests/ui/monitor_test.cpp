#include "rules/transport_watch.h"
#include "tests/ui/support/console_test.h"
#include "ui/monitor/speed_graph.h"

#include <QAbstractButton>
#include <QProgressBar>
#include <QSignalSpy>

namespace tollwick {
namespace {

using simulator::Server;

class MonitorTest : public ConsoleTest {
protected:
    MonitorTest() {
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
    EXPECT_EQ(changes.count(), 2);
    clickNode("outbox");
    tickTimes(30);
    EXPECT_EQ(polls(), 2);
}

TEST_F(MonitorTest, ShowsATransportAndTellsItsEnd) {
    std::string told;
    window().notify = [&](const QString& text) { told += text.toStdString(); };
    const auto* bar = child<QProgressBar>(window(), "MonitorProgress");
    EXPECT_TRUE(bar->isVisible());
    for (const bool is_notified : {true, false}) {
        // 2.5 s to dial the first host, 0.8 s to log in, then a mail of 3,000 bytes.
        clickNode("schedule"); // the commands work from any node
        trigger("UucpTransportNowMenu");
        clickNode("uucpmonitor");
        EXPECT_TRUE(polled().starts_with("|Dialing malmo|"));
        letTransportRun(2500);
        EXPECT_TRUE(polled().starts_with("|Logging in|"));
        letTransportRun(800);
        EXPECT_EQ(polled(), "|Sending|12|1|D.corv0A17|3 kB|0 %|0 bps");
        for (int i = 0; bar->value() == 0 && i < 200; ++i) {
            letTransportRun(100);
            polled();
        }
        EXPECT_GT(bar->value(), 0);
        EXPECT_GT(window().findChild<SpeedGraph*>()->history().highest(), 0);
        EXPECT_EQ(told, "");
        trigger(is_notified ? "Cancelmenu" : "CancelUucpTransportMenu");
        EXPECT_TRUE(polled().starts_with("|Cancelled|"));
        letTransportRun(3000);
        for (int i = 0; i <= TransportWatch::kQuietStatuses; ++i)
            EXPECT_TRUE(polled().starts_with("|Idle|"));
        EXPECT_EQ(told, is_notified ? "The UUCP transport has ended." : "");
        told.clear();
        if (is_notified) // which can be switched off
            child<QAbstractButton>(window(), "NotifyOption")->click();
    }
    EXPECT_EQ(stored({"General", "TransportNotification", "1"}), "0");
    clickNode("outbox");
    EXPECT_FALSE(bar->isVisible());
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

    // A command waits for the status that is on its way, which is lost without a word together
    // with the connection.
    tickTimes(11);
    ASSERT_TRUE(waitUntil([this] { return polls() == 2; }));
    boxes.expectBox(kCritical, unable("send UUCP-command to"));
    inRequest([this] { trigger("UucpTransportNowMenu"); }, [this] { loseConnection(); });
    EXPECT_EQ(requestCount(ObjectClass::UucpCommand), 0);
    tick();
    EXPECT_TRUE(isLoggedOut());
}

} // namespace
} // namespace tollwick
