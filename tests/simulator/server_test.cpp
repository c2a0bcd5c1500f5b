#include "client.h"
#include "link/link_receiver.h"
#include "simulator/sample_site.h"
#include "simulator/server.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpSocket>
#include <gtest/gtest.h>

namespace tollwick::simulator {
namespace {

constexpr int kPatience = 10'000; // milliseconds

template <class Condition>
bool waitUntil(Condition condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(kPatience))
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
    }
    return true;
}

// A console without a window.
class Console {
public:
    explicit Console(const Server& server) {
        socket.connectToHost(QHostAddress::LocalHost, server.port());
        EXPECT_TRUE(waitUntil([this] { return socket.state() == QTcpSocket::ConnectedState; }));
    }
    bool takeKey() {
        const bool arrived = waitUntil([this] { return socket.bytesAvailable() >= 32; });
        key = socket.readAll().toStdString();
        return arrived && key.size() == 32;
    }
    QByteArray lineOf(const Comrecord& record) const {
        return QByteArray::fromStdString(encodeLine(record, key, 77));
    }
    Comrecord receive() {
        Comrecord reply = EmptyComrecord;
        std::string line;
        if (waitUntil([&] {
                framer.append(socket.readAll().toStdString());
                return framer.takeLine(line);
            }))
            decodeLine(line, key, reply);
        return reply;
    }
    Comrecord ask(const Comrecord& record) {
        socket.write(lineOf(record));
        return receive();
    }
    bool isClosed() {
        return waitUntil([this] { return socket.state() == QTcpSocket::UnconnectedState; });
    }

    QTcpSocket socket;
    std::string key;
    LineFramer framer;
};

class ServerTest : public testing::Test {
protected:
    ServerTest() { EXPECT_TRUE(server.listen()); }

    Server server{sampleSite()};
};

TEST_F(ServerTest, ServesTwoConsolesAtOnce) {
    Console one(server);
    Console two(server);
    ASSERT_TRUE(one.takeKey());
    ASSERT_TRUE(two.takeKey());
    EXPECT_NE(one.key, two.key);
    for (const char c : one.key)
        EXPECT_TRUE(c >= 33 && c <= 126);

    EXPECT_EQ(one.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    EXPECT_EQ(two.ask(request(Operation::Get, ObjectClass::Settings)).Operation, result::Refused);
    EXPECT_EQ(two.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);

    // A change of one is seen by the other, and their walks through a list do not meet.
    EXPECT_EQ(one.ask(request(Operation::Get, ObjectClass::OutboxMail)).Operation, result::Done);
    int changes = 0;
    QObject::connect(&server, &Server::siteChanged, [&changes] { ++changes; });
    EXPECT_EQ(two.ask(requestWith(Operation::Delete, ObjectClass::OutboxMail,
                                  server.site().outbox.front()))
                  .RecordNumber,
              0);
    EXPECT_EQ(changes, 1);
    const auto first =
        recordIn<OutboxRecord>(two.ask(request(Operation::Get, ObjectClass::OutboxMail)));
    const auto next =
        recordIn<OutboxRecord>(one.ask(request(Operation::GetNext, ObjectClass::OutboxMail)));
    EXPECT_EQ(first, next);

    const auto host = recordIn<HostRecord>(one.ask(request(Operation::Get, ObjectClass::Host, 2)));
    EXPECT_EQ(host.record_number, 3);
    EXPECT_EQ(host.display_name.text(), "Göteborgs lager");
    EXPECT_EQ(server.requests().back(), (Request{50, 20, 2}));
}

TEST_F(ServerTest, TakesBytesAsTheyComeAndRefusesNonsense) {
    Console console(server);
    ASSERT_TRUE(console.takeKey());
    const QByteArray login = console.lineOf(loginRequest("admin", "tollwick"));
    for (const char byte : login) {
        console.socket.write(&byte, 1);
        console.socket.flush();
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(console.receive().RecordNumber, -1);

    for (const QByteArray& nonsense :
         {QByteArray("\r\n"), QByteArray("GET / HTTP/1.0\r\n"), QByteArray("\0\n\r\r\n", 5),
          QByteArray(2 + 2 * 4106, 'F') + "\r\n"}) {
        console.socket.write(nonsense);
        EXPECT_EQ(console.receive().Operation, result::Refused) << nonsense.left(20).toStdString();
    }

    // Two requests in one packet get two replies in their order.
    console.socket.write(console.lineOf(request(Operation::Get, ObjectClass::Host, 1)) +
                         console.lineOf(request(Operation::Get, ObjectClass::Host, 99)));
    EXPECT_EQ(console.receive().Operation, result::Done);
    EXPECT_EQ(console.receive().Operation, result::EndOfList);
}

TEST_F(ServerTest, ClosesOnlyTheConnectionWithAnOverlongLine) {
    Console bystander(server);
    ASSERT_TRUE(bystander.takeKey());
    for (const QByteArray& end : {QByteArray(), QByteArray("\r\n")}) {
        Console console(server);
        ASSERT_TRUE(console.takeKey());
        console.socket.write(QByteArray(qsizetype(kMaxLineSize) + 1, 'A') + end);
        EXPECT_TRUE(console.isClosed());
    }
    EXPECT_EQ(bystander.ask(loginRequest("admin", "no")).Operation, result::Done);
    EXPECT_TRUE(waitUntil([this] { return server.connectionCount() == 1; }));
}

TEST_F(ServerTest, MisbehavesAsTold) {
    server.faults().send_no_key = true;
    Console keyless(server);
    EXPECT_TRUE(waitUntil([this] { return server.connectionCount() == 1; }));
    server.faults() = {};
    server.faults().instead_of_key = "hello";
    Console greeted(server);
    EXPECT_TRUE(waitUntil([&] { return greeted.socket.bytesAvailable() == 5; }));
    EXPECT_EQ(keyless.socket.bytesAvailable(), 0);

    server.faults() = {};
    Console console(server);
    ASSERT_TRUE(console.takeKey());
    server.faults().result = result::Refused;
    server.faults().only_class = ObjectClass::Host;
    EXPECT_EQ(console.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    EXPECT_EQ(console.ask(request(Operation::Get, ObjectClass::Host, 1)).Operation,
              result::Refused);

    server.faults() = {};
    server.faults().never_reply = true;
    server.forgetRequests();
    console.socket.write(console.lineOf(request(Operation::Delete, ObjectClass::Host, 1)));
    EXPECT_TRUE(waitUntil([this] { return server.requests().size() == 1; }));
    EXPECT_EQ(server.lastRequest().RecordNumber, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(console.socket.bytesAvailable(), 0);
    server.closeConnections();
    EXPECT_TRUE(console.isClosed());
    EXPECT_TRUE(greeted.isClosed());
}

TEST(ServerTransport, EmptiesTheOutboxWithoutBeingAsked) {
    Site site = sampleSite();
    site.outbox.resize(2);
    std::chrono::milliseconds now{0};
    Server server(site, [&now] { return now; });
    ASSERT_TRUE(server.listen());
    Console console(server);
    ASSERT_TRUE(console.takeKey());
    console.ask(loginRequest("admin", "tollwick"));
    console.ask(
        requestWith(Operation::Add, ObjectClass::UucpCommand, UucpCommandRecord{kTrue, kFalse}));
    int changes = 0;
    QObject::connect(&server, &Server::siteChanged, [&changes] { ++changes; });
    now += std::chrono::hours(1);
    EXPECT_TRUE(waitUntil([&] { return server.site().outbox.empty(); }));
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace tollwick::simulator
