#include "program.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace tollwick::ctl {
namespace {

using ConnectionTest = ProgramTest;

TEST_F(ConnectionTest, PasswordsComeFromAFileOrTheEnvironmentAndAWrongOneIsRefused) {
    folder.write("right", "tollwick\r\nmore\n");
    folder.write("wrong", "no\n");
    const struct {
        QString environment;
        QStringList options;
        int status;
    } cases[] = {{"tollwick", {}, 0},
                 {"no", {}, 4},
                 {"", {}, 4},
                 {"no", {"--password-file", file("right")}, 0},
                 {"tollwick", {"--password-file", file("wrong")}, 4},
                 {"tollwick", {"--password-file", file("missing")}, 2},
                 {"tollwick", {"--user", "nobody"}, 4},
                 {{}, {}, 2}}; // no terminal to ask on
    for (const auto& each : cases) {
        SCOPED_TRACE(each.environment.toStdString() + each.options.join(' ').toStdString());
        password = each.environment;
        const Result result = run(QStringList{"status"} + each.options);
        EXPECT_EQ(result.status, each.status) << result.errors;
        EXPECT_EQ(result.errors.empty(), each.status == 0);
        EXPECT_EQ(result.output.empty(), each.status != 0);
    }
}

#ifdef Q_OS_UNIX // elsewhere the settings are not in a file
TEST_F(ConnectionTest, WhatIsNotGivenComesFromTheConsolesSettings) {
    folder.write("brask-software/tollwick.ini", "[Tollwick\\General]\nCountryCode=4000\n"
                                                "ServerConnectUsername=nobody\n");
    const Result refused = run({"status"});
    EXPECT_EQ(refused.status, 4);
    EXPECT_NE(refused.errors.find("Inloggningen misslyckades!"), std::string::npos);
    EXPECT_NE(run({"hosts", "show", "Lund", "--user", "admin"}).errors.find("ingen värd"),
              std::string::npos);
}
#endif

#ifdef Q_OS_LINUX
TEST_F(ConnectionTest, OnATerminalThePasswordIsAskedForUnseenAndLongWorkShowsABar) {
    EXPECT_EQ(run({"backup", file("site.json")}).status, 0);
    service.run([](simulator::Server& server) { server.site().hosts.clear(); });
    password = QString();
    QProcess terminal;
    setUp(terminal);
    terminal.start("script", {"-qec",
                              QStringLiteral("%1 --port %2 restore %3")
                                  .arg(TOLLWICK_CTL, QString::number(port), file("site.json")),
                              "/dev/null"});
    std::string shown;
    while (!shown.ends_with(": ") && terminal.waitForReadyRead())
        shown += terminal.readAllStandardOutput().toStdString();
    EXPECT_EQ(shown, "Password of admin at 127.0.0.1: ");
    terminal.write("tollwick\n");
    const Result result = resultOf(terminal);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.find("tollwick"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\r\x1b[K[############..................] 2/5"), std::string::npos)
        << result.output;
}
#endif

TEST_F(ConnectionTest, AServiceThatFailsEndsItWithTheStatusOfItsFault) {
    using simulator::Faults;
    const auto close = [](QTcpSocket& socket, const Comrecord&, const std::string&) {
        socket.abort();
    };
    using C = ObjectClass;
    using O = Operation;
    const struct {
        const char* name;
        Faults faults;
        QStringList arguments;
        int status;
    } cases[] = {// clang-format off
        {"refuses the login", {.result = 2}, {"hosts"}, 4},
        {"does not answer the login", {.never_reply = true}, {"hosts"}, 3},
        {"refuses a list", {.result = 2, .only_class = C::Host}, {"hosts"}, 5},
        {"fails a list", {.result = -1, .only_class = C::Host}, {"hosts"}, 5},
        {"does not answer", {.never_reply = true, .only_class = C::Host}, {"hosts"}, 3},
        {"does not tell its status", {.never_reply = true, .only_class = C::UucpStatus}, {"status"}, 3},
        {"refuses its status", {.result = 2, .only_class = C::UucpStatus}, {"status"}, 5},
        {"closes", {.deliver = close, .only_class = C::OutboxMail}, {"outbox"}, 3},
        {"refuses the settings", {.result = 2, .only_class = C::Settings, .only_operation = O::Save}, {"settings", "set", "mail_logging=no"}, 5},
        {"does not delete a host", {.result = 7, .only_class = C::Host, .only_operation = O::Delete}, {"hosts", "delete", "Stockholm"}, 5},
        {"refuses a transport", {.result = 2, .only_class = C::UucpCommand}, {"transport", "start", "--wait"}, 5}};
    // clang-format on
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        setFaults(each.faults);
        const Result result = run(QStringList{"--timeout", "0.2"} + each.arguments);
        EXPECT_EQ(result.status, each.status) << result.errors;
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors, "");
    }
}

TEST_F(ConnectionTest, WithoutAServiceThereIsNoConnection) {
    {
        QTcpServer closed;
        closed.listen(QHostAddress::LocalHost);
        port = closed.serverPort();
    }
    const Result refused = run({"status"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_NE(refused.errors.find("10061"), std::string::npos) << refused.errors;
    EXPECT_EQ(run({"status", "--host", "no.such.host.invalid"}).status, 3);
}

} // namespace
} // namespace tollwick::ctl
