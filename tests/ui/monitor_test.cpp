#include "tests/ui/support/console_test.h"

#include <QSignalSpy>

namespace tollwick {
namespace {

using simulator::Server;

class MonitorTest : public ConsoleTest {
protected:
    MonitorTest() {
        logIn();
        stopTimer();
    }

    int polls() { return requestCount(ObjectClass::UucpStatus); }
    void tickTimes(int times) {
        for (int i = 0; i < times; ++i)
            tick();
        EXPECT_TRUE(waitUntil([this] { return !context().requests.isBusy(); }));
    }
    // The second column, after as many ticks as bring a new status.
    Lines polled() {
        tickTimes(11);
        Lines values;
        for (const std::string& line : listed())
            values.push_back(line.substr(line.find('|') + 1));
        values.erase(values.begin());
        return values;
    }
};

TEST_F(MonitorTest, AsksOnEveryEleventhTickWhileItIsShown) {
    tickTimes(30);
    EXPECT_EQ(polls(), 0);
    clickNode("uucpmonitor");
    tickTimes(10);
    EXPECT_EQ(polls(), 0);
    tickTimes(1);
    EXPECT_EQ(polls(), 1);
    for (int polls_then = 2; polls_then <= 3; ++polls_then) {
        tickTimes(11);
        EXPECT_EQ(polls(), polls_then);
    }

    // The count goes on where it stood.
    tickTimes(5);
    clickNode("outbox");
    tickTimes(30);
    EXPECT_EQ(polls(), 3);
    clickNode("uucpmonitor");
    tickTimes(5);
    EXPECT_EQ(polls(), 3);
    tickTimes(1);
    EXPECT_EQ(polls(), 4);
}

TEST_F(MonitorTest, UnchangedCellsAreNotRewritten) {
    clickNode("uucpmonitor");
    QSignalSpy changes(list().model(), &QAbstractItemModel::dataChanged);
    EXPECT_EQ(polled(), (Lines{"Idle", "12", "0", "", "0 kB", "0 %", "0 bps"}));
    EXPECT_EQ(changes.count(), 2);
    polled();
    EXPECT_EQ(changes.count(), 2);
    onServer([](Server& s) { s.site().outbox.pop_back(); });
    EXPECT_EQ(polled().at(1), "11");
    ASSERT_EQ(changes.count(), 3);
    EXPECT_EQ(changes.last().at(0).toModelIndex(), list().model()->index(1, 1));
}

TEST_F(MonitorTest, ShowsATransportFromStartToCancel) {
    // 2.5 s to dial the first host, 0.8 s to log in, then a mail of 3,000 bytes.
    clickNode("uucpmonitor");
    trigger("UucpTransportNowMenu");
    EXPECT_EQ(polled().at(0), "Dialing malmo");
    letTransportRun(2500);
    EXPECT_EQ(polled().at(0), "Logging in");
    letTransportRun(800);
    EXPECT_EQ(polled(), (Lines{"Sending", "12", "1", "D.corv0A17", "3 kB", "0 %", "0 bps"}));
    letTransportRun(500);
    const Lines sending = polled();
    EXPECT_EQ(sending.at(0), "Sending");
    EXPECT_GT(std::stoi(sending.at(5)), 30);
    EXPECT_GT(std::stoi(sending.at(6)), 10'000);

    trigger("Cancelmenu");
    EXPECT_EQ(polled(), (Lines{"Cancelled", "12", "0", "", "0 kB", "0 %", "0 bps"}));
    letTransportRun(3000);
    EXPECT_EQ(polled().at(0), "Idle");

    // The File menu's entries do the same from any node.
    clickNode("schedule");
    trigger("UucpTransportNowMenu");
    const auto isActive = [](Server& s) { return s.transport().isActive(); };
    EXPECT_TRUE(onServer(isActive));
    trigger("CancelUucpTransportMenu");
    letTransportRun(3000);
    clickNode("uucpmonitor");
    EXPECT_EQ(polled().at(0), "Idle");
    EXPECT_EQ(requestCount(ObjectClass::UucpCommand), 4);
}

TEST_F(MonitorTest, ARefusedRequestEndsTheConnection) {
    const struct {
        ObjectClass object_class;
        std::function<void()> request;
        const char* failure;
    } cases[] = {
        {ObjectClass::UucpStatus, [this] { tickTimes(11); },
         "Unable to get UUCP status from the Tollwick Service!\nThe connection is terminated!"},
        {ObjectClass::UucpCommand, [this] { trigger("CancelUucpTransportMenu"); },
         "Unable to send UUCP-command to the Tollwick Service!\nThe connection is terminated!"},
    };
    for (const auto& c : cases) {
        onServer([&](Server& s) {
            s.faults().only_class = c.object_class;
            s.faults().result = result::Refused;
        });
        clickNode("uucpmonitor");
        boxes.expectBox(QMessageBox::Critical, c.failure);
        c.request();
        EXPECT_TRUE(waitUntil([this] { return boxes.done() && !context().link.isOpen(); }));
        EXPECT_EQ(tree().size(), 15U);
        tick();
        EXPECT_TRUE(isLoggedOut());
        window().menuTimer()->start();
        logIn();
        stopTimer();
    }
}

TEST_F(MonitorTest, AStatusThatDoesNotComeIsWaitedForWithoutAWord) {
    clickNode("uucpmonitor");
    onServer([](Server& s) {
        s.faults().only_class = ObjectClass::UucpStatus;
        s.faults().never_reply = true;
    });
    for (int i = 0; i < 11; ++i)
        tick();
    ASSERT_TRUE(waitUntil([this] { return polls() == 1; }));
    // The windows stay usable, and no tick sends another request.
    for (int i = 0; i < 40; ++i)
        tick();
    clickRow(3);
    EXPECT_TRUE(context().requests.isBusy());
    EXPECT_EQ(polls(), 1);

    clock.time.second += 31;
    EXPECT_TRUE(waitUntil([this] { return !context().requests.isBusy(); }));
    EXPECT_TRUE(context().link.isOpen());
    onServer([](Server& s) { s.faults() = {}; });
    EXPECT_EQ(polled().at(0), "Idle");
    EXPECT_EQ(polls(), 2);
}

TEST_F(MonitorTest, ACommandWaitsForTheStatusThatIsOnItsWay) {
    clickNode("uucpmonitor");
    onServer([](Server& s) {
        s.faults().only_class = ObjectClass::UucpStatus;
        s.faults().never_reply = true;
    });
    for (int i = 0; i < 11; ++i)
        tick();
    // Both are lost then; the first box comes up, and is answered, while input is locked.
    for (const char* failure :
         {"Unable to get UUCP status from the Tollwick Service!\nThe connection is terminated!",
          "Unable to send UUCP-command to the Tollwick Service!\nThe connection is terminated!"})
        boxes.expectBox(QMessageBox::Critical, failure);
    inRequest([this] { trigger("UucpTransportNowMenu"); },
              [this] { onServer([](Server& s) { s.closeConnections(); }); });
    EXPECT_EQ(requestCount(ObjectClass::UucpCommand), 0);
    tick();
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(MonitorTest, ADroppedConnectionIsNoticedWithinATick) {
    clickNode("uucphosts");
    clickRow(0);
    tick();
    onServer([](Server& s) { s.closeConnections(); });
    ASSERT_TRUE(waitUntil([this] { return !context().link.isOpen(); }));
    EXPECT_EQ(info(), "Ready");
    EXPECT_EQ(tree().size(), 15U);
    tick();
    EXPECT_TRUE(tree().empty());
    EXPECT_EQ(listed(), Lines{""});
    EXPECT_EQ(info(), "Connection closed.");
    EXPECT_TRUE(action("LoginMenu")->isEnabled());
    for (const char* name : {"LogOffMenu", "DeleteMenu"})
        EXPECT_FALSE(action(name)->isEnabled()) << name;
}

} // namespace
} // namespace tollwick
