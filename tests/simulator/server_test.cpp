#include "client.h"
#include "link/link_receiver.h"
#include "simulator/sample_site.h"
#include "simulator/server.h"
#include "simulator/site_file.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tollwick::simulator {
namespace {

constexpr int kPatience = 30'000; // milliseconds

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
    explicit Console(quint16 port) {
        socket.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_TRUE(waitUntil([this] { return socket.state() == QTcpSocket::ConnectedState; }));
    }
    bool takeKey() {
        waitUntil([this] { return socket.bytesAvailable() >= 32; });
        key = socket.readAll().toStdString();
        return key.size() == 32;
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
    Console one(server.port());
    Console two(server.port());
    ASSERT_TRUE(one.takeKey() && two.takeKey());
    EXPECT_NE(one.key, two.key);
    for (const char c : one.key)
        EXPECT_TRUE(c >= 33 && c <= 126);
    EXPECT_EQ(one.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    EXPECT_EQ(two.ask(request(Operation::Get, ObjectClass::Settings)).Operation, result::Refused);
    EXPECT_EQ(two.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    // A change of one is seen by the other.
    int changes = 0;
    QObject::connect(&server, &Server::siteChanged, [&changes] { ++changes; });
    two.ask(request(Operation::Delete, ObjectClass::Host, 1));
    EXPECT_EQ(changes, 1);
    const Comrecord host = one.ask(request(Operation::Get, ObjectClass::Host, 1));
    EXPECT_EQ(recordIn<HostRecord>(host).display_name.text(), "Göteborgs lager");
    EXPECT_EQ(server.requests().back(), (Request{50, 20, 1}));
}

TEST_F(ServerTest, TakesBytesAsTheyComeAndRefusesNonsense) {
    Console console(server.port());
    ASSERT_TRUE(console.takeKey());
    for (const char byte : console.lineOf(loginRequest("admin", "tollwick"))) {
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
    // An overlong line closes its own connection only.
    Console talkative(server.port());
    ASSERT_TRUE(talkative.takeKey());
    talkative.socket.write(QByteArray(qsizetype(kMaxLineSize) + 1, 'A') + "\r\n");
    EXPECT_TRUE(talkative.isClosed());
    EXPECT_EQ(console.ask(loginRequest("admin", "no")).Operation, result::Done);
}

TEST_F(ServerTest, MisbehavesAsTold) {
    server.faults().send_no_key = true;
    Console keyless(server.port());
    EXPECT_TRUE(waitUntil([this] { return server.connectionCount() == 1; }));
    server.faults() = {};
    server.faults().instead_of_key = "hello";
    Console greeted(server.port());
    EXPECT_TRUE(waitUntil([&] { return greeted.socket.bytesAvailable() == 5; }));
    EXPECT_EQ(keyless.socket.bytesAvailable(), 0);
    server.faults() = {};
    Console console(server.port());
    ASSERT_TRUE(console.takeKey());
    server.faults().result = result::Refused;
    server.faults().only_class = ObjectClass::Host;
    EXPECT_EQ(console.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    EXPECT_EQ(console.ask(request(Operation::Get, ObjectClass::Host)).Operation, result::Refused);
    server.faults() = {};
    server.faults().never_reply = true;
    server.forgetRequests();
    console.socket.write(console.lineOf(request(Operation::Delete, ObjectClass::Host, 1)));
    EXPECT_TRUE(waitUntil([this] { return server.requests().size() == 1; }));
    EXPECT_EQ(server.lastRequest().RecordNumber, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(console.socket.bytesAvailable(), 0);
    server.closeConnections();
    EXPECT_TRUE(console.isClosed() && greeted.isClosed());
}

TEST(ServerTransport, EmptiesTheOutboxWithoutBeingAsked) {
    Site site = sampleSite();
    site.outbox.resize(2);
    std::chrono::milliseconds now{0};
    Server server(site, [&now] { return now; });
    ASSERT_TRUE(server.listen());
    Console console(server.port());
    ASSERT_TRUE(console.takeKey());
    console.ask(loginRequest("admin", "tollwick"));
    console.ask(
        requestWith(Operation::Add, ObjectClass::UucpCommand, UucpCommandRecord{kTrue, kFalse}));
    now += std::chrono::hours(1);
    EXPECT_TRUE(waitUntil([&] { return server.site().outbox.empty(); }));
}

class Program {
public:
    explicit Program(const QStringList& arguments) {
        process.start(QStringLiteral(TOLLWICK_SIMULATOR), arguments);
        EXPECT_TRUE(process.waitForStarted(kPatience));
    }
    // Its exit code and what it has told.
    std::string ended() {
        EXPECT_TRUE(process.waitForFinished(kPatience));
        return std::to_string(process.exitCode()) + ": " +
               (process.readAllStandardOutput() + process.readAllStandardError()).toStdString();
    }

    QProcess process;
};

TEST(Program, TellsAboutItselfAndRefusesBadOptions) {
    const std::string help = Program({"--help"}).ended();
    for (const char* told : {"0: ", "--port", "--site", "--bind", "542", "admin", "tollwick"})
        EXPECT_NE(help.find(told), std::string::npos) << told;
    for (const QStringList& bad : {QStringList{"--port", "65536"},
                                   {"--port", "x"},
                                   {"--nonsense"},
                                   {"extra"},
                                   {"--site"},
                                   {"--bind", "nowhere"}}) {
        const std::string told = Program(bad).ended();
        EXPECT_TRUE(told.starts_with("2: ") && told.find("--help") != std::string::npos) << told;
    }
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    const std::string taken = Program({"--port", QString::number(other.serverPort())}).ended();
    EXPECT_TRUE(taken.find("Cannot listen on 127.0.0.1:") != std::string::npos && taken[0] == '1')
        << taken;
}

TEST(Program, KeepsItsSiteInAFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("ö/site.json");
    Program program({"--port", "0", "--site", path});
    QByteArray told;
    while (!told.contains('\n') && program.process.waitForReadyRead(kPatience))
        told += program.process.readAllStandardOutput();
    ASSERT_TRUE(told.startsWith("Listening on 127.0.0.1:")) << told.toStdString();
    Console console(told.trimmed().mid(told.indexOf(':') + 1).toUShort());
    ASSERT_TRUE(console.takeKey());
    console.ask(loginRequest("admin", "tollwick"));
    console.ask(request(Operation::Delete, ObjectClass::Host, 1));
    EXPECT_EQ(SiteFile(path.toStdU16String()).load().hosts.front().record_number, 3);
#ifndef Q_OS_WIN
    program.process.terminate();
    EXPECT_TRUE(program.ended().starts_with("0: "));
#endif
    QFile damaged(path);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("{\"hosts\": 1}");
    damaged.close();
    const std::string refused = Program({"--port", "0", "--site", path}).ended();
    EXPECT_TRUE(refused.starts_with("1: ")) << refused;
    EXPECT_NE(refused.find("site.json: hosts: a list"), std::string::npos) << refused;
}

} // namespace
} // namespace tollwick::simulator
