#include "client.h"
#include "simulator/sample_site.h"
#include "simulator/server.h"
#include "site/site_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wait_until.h"
#include "wire/link_receiver.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <gtest/gtest.h>

namespace tollwick::simulator {
namespace {

// A console without a window.
class Console {
public:
    explicit Console(quint16 port) {
        socket.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_TRUE(waitUntil([this] { return socket.bytesAvailable() == 32; }));
        key = socket.readAll().toStdString();
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

    QTcpSocket socket;
    std::string key;
    LineFramer framer;
};

class ServerTest : public testing::Test {
protected:
    ServerTest() { EXPECT_TRUE(server.listen()); }

    std::chrono::milliseconds now{0};
    Server server{sampleSite(), [this] { return now; }};
};

TEST_F(ServerTest, ServesTwoConsolesAtOnce) {
    Console one(server.port());
    Console two(server.port());
    EXPECT_NE(one.key, two.key);
    for (const char c : one.key)
        EXPECT_TRUE(c >= 33 && c <= 126);
    EXPECT_EQ(one.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    EXPECT_EQ(two.ask(request(Operation::Get, ObjectClass::Settings)).Operation, result::Refused);
    EXPECT_EQ(two.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    // A change of one is seen by the other.
    two.ask(request(Operation::Delete, ObjectClass::Host, 1));
    const Comrecord host = one.ask(request(Operation::Get, ObjectClass::Host, 1));
    EXPECT_EQ(recordIn<HostRecord>(host).display_name.text(), "Göteborgs lager");
    EXPECT_EQ(server.requests().back(), (Request{50, 20, 1}));
    // The outbox empties without being asked.
    two.ask(
        requestWith(Operation::Add, ObjectClass::UucpCommand, UucpCommandRecord{kTrue, kFalse}));
    const std::size_t mails = server.site().outbox.size();
    now += std::chrono::hours(1);
    EXPECT_TRUE(waitUntil([&] { return server.site().outbox.size() < mails; }));
}

TEST_F(ServerTest, RefusesNonsense) {
    Console console(server.port());
    EXPECT_EQ(console.ask(loginRequest("admin", "tollwick")).RecordNumber, -1);
    console.socket.write("\0\n\r\r\n", 5);
    EXPECT_EQ(console.receive().Operation, result::Refused);
    // Two requests in one packet get two replies in their order.
    console.socket.write(console.lineOf(request(Operation::Get, ObjectClass::Host, 1)) +
                         console.lineOf(request(Operation::Get, ObjectClass::Host, 99)));
    EXPECT_EQ(console.receive().Operation, result::Done);
    EXPECT_EQ(console.receive().Operation, result::EndOfList);
    // An overlong line closes its own connection only.
    Console talkative(server.port());
    talkative.socket.write(QByteArray(qsizetype(kMaxLineSize) + 1, 'A') + "\r\n");
    EXPECT_TRUE(
        waitUntil([&] { return talkative.socket.state() == QTcpSocket::UnconnectedState; }));
    EXPECT_EQ(console.ask(loginRequest("admin", "no")).Operation, result::Done);
}

class Program {
public:
    explicit Program(const QStringList& arguments) {
        process.start(QStringLiteral(TOLLWICK_SIMULATOR), arguments);
        EXPECT_TRUE(process.waitForStarted());
    }
    // Its exit code and what it has told.
    std::string ended() {
        EXPECT_TRUE(process.waitForFinished());
        return std::to_string(process.exitCode()) + ": " +
               (process.readAllStandardOutput() + process.readAllStandardError()).toStdString();
    }

    QProcess process;
};

TEST(Program, TellsAboutItselfAndRefusesBadOptions) {
    const std::string help = Program({"--help"}).ended();
    for (const char* told : {"0: ", "--port", "--site", "--bind", "542", "admin", "tollwick"})
        EXPECT_NE(help.find(told), std::string::npos) << told;
    const std::string refused = Program({"--port", "65536"}).ended();
    EXPECT_TRUE(refused.starts_with("2: ")) << refused;
    EXPECT_NE(refused.find("--help"), std::string::npos) << refused;
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    const std::string taken = Program({"--port", QString::number(other.serverPort())}).ended();
    EXPECT_TRUE(taken.starts_with("1: tollwick-simulator: Cannot listen on 127.0.0.1:")) << taken;
}

TEST(Program, KeepsItsSiteInAFile) {
    const TemporaryFolder folder;
    const QStringList arguments = {"--port", "0", "--site",
                                   QString::fromStdString(folder.text("ö/site.json"))};
    Program program(arguments);
    QByteArray told;
    while (!told.contains('\n') && program.process.waitForReadyRead())
        told += program.process.readAllStandardOutput();
    ASSERT_TRUE(told.startsWith("Listening on 127.0.0.1:")) << told.toStdString();
    Console console(told.trimmed().mid(told.indexOf(':') + 1).toUShort());
    console.ask(loginRequest("admin", "tollwick"));
    console.ask(request(Operation::Delete, ObjectClass::Host, 1));
    EXPECT_EQ(SiteFile(folder / "ö/site.json").load().hosts.front().record_number, 3);
#ifndef Q_OS_WIN
    program.process.terminate();
    EXPECT_TRUE(program.ended().starts_with("0: "));
#endif
    folder.write("ö/site.json", "{\"hosts\": 1}");
    const std::string refused = Program(arguments).ended();
    EXPECT_TRUE(refused.starts_with("1: ")) << refused;
    EXPECT_NE(refused.find("site.json: hosts: a list"), std::string::npos) << refused;
}

} // namespace
} // namespace tollwick::simulator
