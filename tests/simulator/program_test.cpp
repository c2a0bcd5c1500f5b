// The program itself: its options, exit codes and its site file.
#include "client.h"
#include "link/link_receiver.h"
#include "simulator/site_file.h"

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tollwick::simulator {
namespace {

constexpr int kPatience = 30'000; // milliseconds

class Program {
public:
    explicit Program(const QStringList& arguments) {
        process.start(QStringLiteral(TOLLWICK_SIMULATOR), arguments);
        EXPECT_TRUE(process.waitForStarted(kPatience));
    }
    int exitCode() {
        EXPECT_TRUE(process.waitForFinished(kPatience));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        output += process.readAllStandardOutput();
        errors = process.readAllStandardError();
        return process.exitCode();
    }
    // The port that it says it listens on.
    quint16 port() {
        while (!output.contains('\n') && process.waitForReadyRead(kPatience))
            output += process.readAllStandardOutput();
        EXPECT_TRUE(output.startsWith("Listening on 127.0.0.1:")) << output.toStdString();
        return output.trimmed().mid(output.indexOf(':') + 1).toUShort();
    }

    QProcess process;
    QByteArray output;
    QByteArray errors;
};

TEST(Program, TellsAboutItselfAndRefusesBadOptions) {
    Program help({"--help"});
    EXPECT_EQ(help.exitCode(), 0);
    for (const char* told : {"--port", "--site", "--bind", "542", "admin", "tollwick"})
        EXPECT_TRUE(help.output.contains(told)) << told;

    for (const QStringList& bad : {QStringList{"--port", "65536"},
                                   {"--port", "x"},
                                   {"--nonsense"},
                                   {"extra"},
                                   {"--site"},
                                   {"--bind", "nowhere"}}) {
        Program program(bad);
        EXPECT_EQ(program.exitCode(), 2) << bad.join(' ').toStdString();
        EXPECT_TRUE(program.errors.contains("--help"));
    }

    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    Program taken({"--port", QString::number(other.serverPort())});
    EXPECT_EQ(taken.exitCode(), 1);
    EXPECT_TRUE(taken.errors.contains("Cannot listen on 127.0.0.1:"));
    EXPECT_TRUE(taken.output.isEmpty());
}

TEST(Program, KeepsItsSiteInAFile) {
    QTemporaryDir folder;
    const QString path = folder.filePath("ö/site.json");
    Program program({"--port", "0", "--site", path});
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, program.port());
    ASSERT_TRUE(socket.waitForConnected(kPatience));
    while (socket.bytesAvailable() < 32)
        ASSERT_TRUE(socket.waitForReadyRead(kPatience));
    const std::string key = socket.readAll().toStdString();
    for (const Comrecord& ask :
         {loginRequest("admin", "tollwick"), request(Operation::Delete, ObjectClass::Host, 1)}) {
        socket.write(QByteArray::fromStdString(encodeLine(ask, key, 1)));
        while (!socket.canReadLine())
            ASSERT_TRUE(socket.waitForReadyRead(kPatience));
        socket.readLine();
    }
    SiteFile file(path.toStdU16String());
    EXPECT_EQ(file.load().hosts.front().record_number, 3);
#ifndef Q_OS_WIN
    program.process.terminate();
    EXPECT_EQ(program.exitCode(), 0);
#endif

    QFile damaged(path);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("{\"hosts\": 1}");
    damaged.close();
    Program refused({"--port", "0", "--site", path});
    EXPECT_EQ(refused.exitCode(), 1);
    EXPECT_TRUE(refused.errors.contains("site.json: hosts: a list"))
        << refused.errors.toStdString();
}

} // namespace
} // namespace tollwick::simulator
