// The stand-in service as a console meets it: over a real socket, and as a program.
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

using namespace std::chrono_literals;
using enum Operation;
using C = ObjectClass;

Comrecord request(Operation operation, ObjectClass object_class, Long number = 0) {
    return {static_cast<Integer>(operation), static_cast<Integer>(object_class), number, 0, {}};
}
template <class Record>
Comrecord requestWith(Operation operation, ObjectClass object_class, const Record& record) {
    Comrecord with = request(operation, object_class);
    packRecord(record, with);
    return with;
}
template <class Record>
Record recordIn(const Comrecord& reply) {
    Record record;
    unpackRecord(reply, record);
    return record;
}

// A console without a window, logged in unless told otherwise.
class Console {
public:
    explicit Console(quint16 port, bool logs_in = true) {
        socket.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_TRUE(waitUntil([this] { return socket.bytesAvailable() == 32; }));
        key = socket.readAll().toStdString();
        EXPECT_TRUE(!logs_in || logIn(kSamplePassword) == -1);
    }
    Long logIn(std::string_view password) {
        return ask(requestWith(Authenticate, C::Login,
                               LoginRecord{VarText(kSampleUserId), VarText(password)}))
            .RecordNumber;
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
    Integer resultOf(const Comrecord& record) { return ask(record).Operation; }

    QTcpSocket socket;
    std::string key;
    LineFramer framer;
};

class ServerTest : public testing::Test {
protected:
    ServerTest() { EXPECT_TRUE(server.listen()); }

    Site& site() { return server.site(); }

    std::chrono::milliseconds now{0};
    Server server{sampleSite(), [this] { return now; }};
};

TEST_F(ServerTest, ServesTwoConsolesAtOnceAndNoneBeforeItsLogin) {
    Console one(server.port());
    Console two(server.port(), false);
    EXPECT_NE(one.key, two.key);
    EXPECT_TRUE(std::ranges::all_of(one.key, [](char c) { return c >= 33 && c <= 126; }));
    EXPECT_EQ(two.logIn("wrong"), 0);
    EXPECT_EQ(two.resultOf(request(Get, C::Settings)), result::Refused);
    EXPECT_EQ(two.logIn(kSamplePassword), -1);
    // Each walks a list with its own cursor; deleting meanwhile leaves the walk as it was.
    const std::vector<OutboxRecord> mails = site().outbox;
    for (Console* console : {&one, &two})
        EXPECT_EQ(recordIn<OutboxRecord>(console->ask(request(Get, C::OutboxMail))), mails[0]);
    for (const Long number : {0, 1}) // it is there only once
        EXPECT_EQ(two.ask(requestWith(Delete, C::OutboxMail, mails[1])).RecordNumber, number);
    EXPECT_EQ(recordIn<OutboxRecord>(one.ask(request(GetNext, C::OutboxMail))), mails[1]);
    EXPECT_EQ(recordIn<OutboxRecord>(two.ask(request(Get, C::OutboxMail))), mails[0]);
    EXPECT_EQ(recordIn<OutboxRecord>(two.ask(request(GetNext, C::OutboxMail))), mails[2]);
}

TEST_F(ServerTest, NumbersStoresAndDeletesRecords) {
    Console console(server.port());
    ScheduleRecord schedule;
    schedule.identity = kTrue;
    schedule = recordIn<ScheduleRecord>(console.ask(requestWith(Add, C::Schedule, schedule)));
    EXPECT_EQ(schedule.identity, 1);
    const Long number = site().schedules.end()[-2].record_number + 1;
    EXPECT_EQ(schedule.record_number, number);
    schedule.day = 4;
    const Comrecord save = requestWith(Save, C::Schedule, schedule);
    EXPECT_EQ(recordIn<ScheduleRecord>(console.ask(save)), schedule);
    EXPECT_EQ(console.ask(request(Get, C::Schedule, number)).RecordNumber, number);
    EXPECT_EQ(console.resultOf(request(Get, C::Schedule, number + 1)), result::EndOfList);
    for (const Integer expected : {result::Done, result::Refused})
        EXPECT_EQ(console.resultOf(request(Delete, C::Schedule, number)), expected);
    EXPECT_EQ(console.resultOf(save), result::Refused);

    for (const Integer wanted : std::initializer_list<Integer>{1, 2, 8, 9}) {
        SettingsRecord settings;
        settings.admin_port = site().settings_save_answer = wanted;
        EXPECT_EQ(console.resultOf(requestWith(Save, C::Settings, settings)), wanted);
        EXPECT_EQ(site().settings == settings, wanted != result::Refused) << wanted;
    }
    const auto script = [&](Operation operation, const char* name, const char* text) {
        return console.ask(
            requestWith(operation, C::Script, ScriptRecord{VarText(name), VarText(text)}));
    };
    script(Save, "Åre.scp", "one");
    script(Save, "åRE.SCP", "two \r\n");
    EXPECT_EQ(recordIn<ScriptRecord>(script(Get, "ÅRE.scp", "ignored")),
              (ScriptRecord{VarText("Åre.scp"), VarText("two \r\n")}));
    EXPECT_EQ(script(Save, "", "x").Operation, result::Refused);
}

TEST_F(ServerTest, ATransferEmptiesTheOutboxOfActiveHosts) {
    Console console(server.port());
    const auto command = [&](Integer start, Integer cancel) {
        return console.resultOf(requestWith(Add, C::UucpCommand, UucpCommandRecord{start, cancel}));
    };
    const auto statusAfter = [&](std::chrono::milliseconds time) {
        now += time;
        return recordIn<UucpStatusRecord>(console.ask(request(Get, C::UucpStatus)));
    };
    EXPECT_EQ(command(kFalse, kFalse), result::Refused);
    EXPECT_EQ(command(kTrue, kFalse), result::Done);
    EXPECT_EQ(statusAfter(2500ms).state.text(), "Logging in");
    EXPECT_EQ(statusAfter(800ms).state.text(), "Sending");
    // 3000 bytes of 10 bits at 97 hundredths of 33600 bits per second
    EXPECT_EQ(statusAfter(919ms).percent, 99);
    now += 1h; // a clock that jumps passes through everything that is left
    site().hosts[3].active = kFalse;
    const auto isKept = [&](const OutboxRecord& mail) { return mail.node.text() == "are"; };
    EXPECT_TRUE(waitUntil([&] { return std::ranges::all_of(site().outbox, isKept); }));
    site().outbox.clear();
    command(kTrue, kFalse);
    EXPECT_EQ(statusAfter(0ms).state.text(), "No mail to send");
    EXPECT_EQ(statusAfter(3s).state.text(), "Idle");
}

TEST_F(ServerTest, RefusesNonsense) {
    Console console(server.port());
    for (const int operation : {0, 50, 60, -1, 32767})
        for (const int object_class : {0, 10, 110, 160, -1})
            EXPECT_EQ(console.resultOf(request(Operation(operation), C(object_class))),
                      result::Refused)
                << operation << '/' << object_class;
    console.socket.write("\0\n\r\r\n", 5);
    EXPECT_EQ(console.receive().Operation, result::Refused);
    // Two requests in one packet get two replies in their order.
    console.socket.write(console.lineOf(request(Get, C::Host, 1)) +
                         console.lineOf(request(Get, C::Host, 99)));
    EXPECT_EQ(console.receive().Operation, result::Done);
    EXPECT_EQ(console.receive().Operation, result::EndOfList);
    EXPECT_EQ(server.requests().back(), (Request{50, 20, 99}));
    // An overlong line closes its own connection only.
    Console talkative(server.port());
    talkative.socket.write(QByteArray(qsizetype(kMaxLineSize) + 1, 'A') + "\r\n");
    EXPECT_TRUE(
        waitUntil([&] { return talkative.socket.state() == QTcpSocket::UnconnectedState; }));
    EXPECT_EQ(console.logIn("no"), 0);
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
    console.ask(request(Delete, C::Host, 1));
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
