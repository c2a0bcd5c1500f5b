#include "ctl/commands.h"
#include "ctl/output.h"
#include "ctl/records.h"
#include "program.h"
#include "site/field_text.h"

#include <QFile>
#include <QJsonDocument>

#include <csignal>
#include <functional>
#include <set>

namespace tollwick::ctl {
namespace {

using CommandTest = ProgramTest;
using Kind = std::pair<Operation, ObjectClass>;

std::set<Kind> kindsOf(const std::vector<simulator::Request>& requests) {
    std::set<Kind> kinds;
    for (const simulator::Request& request : requests)
        if (request.operation != static_cast<Integer>(Operation::Authenticate) &&
            request.operation != static_cast<Integer>(Operation::GetNext))
            kinds.emplace(Operation{request.operation}, ObjectClass{request.object_class});
    return kinds;
}

TEST_F(CommandTest, ListsPutOutTheSiteFilesFormAndFetchNothingElse) {
    using enum Operation;
    using C = ObjectClass;
    const Site served = site();
    QJsonArray names;
    for (const ScriptRecord& script : served.scripts)
        names.append(QJsonObject{{"file_name", QString::fromStdString(script.file_name.text())}});
    const UucpStatusRecord status =
        service.run([](simulator::Server& s) { return s.transport().status(); });
    const struct {
        QStringList arguments;
        const char* key;
        QJsonValue value;
        std::set<Kind> kinds;
        const char* in_table;
    } cases[] = {// clang-format off
        {{"status"}, "status", recordJson(status), {{Get, C::UucpStatus}}, "State:                   Idle\n"},
        {{"settings"}, "settings", recordJson(served.settings), {{Get, C::Settings}}, "\nadmin_port                542\n"},
        {{"schedules"}, "schedules", recordsJson(served.schedules), {{Get, C::Schedule}}, "3              weekdays  no     00:00    15min "},
        {{"hosts"}, "hosts", recordsJson(served.hosts), {{Get, C::Host}}, "Göteborgs lager    lager.corvale.example  yes     dialup         gbglager\n"},
        {{"hosts", "show", "VÄXJÖ tryckeri"}, "hosts", QJsonArray{recordJson(served.hosts.back())}, {{Get, C::Host}}, "\nconnect_using                 tcpip\n"},
        {{"outbox"}, "outbox", recordsJson(served.outbox), {{Get, C::OutboxMail}}, "åke.öberg@malmo.corvale.example   malmo     2 kB   D.corv0A18\n"},
        {{"scripts"}, "scripts", names, {{Get, C::ScriptFile}}, "malmo.scp\nfjall.scp\n"},
        {{"scripts", "show", "MALMO"}, "scripts", QJsonArray{recordJson(served.scripts.front())}, {{Get, C::ScriptFile}, {Get, C::Script}}, "\n"}};
    // clang-format on
    for (const auto& each : cases) {
        SCOPED_TRACE(each.arguments.join(' ').toStdString());
        service.run([](simulator::Server& server) { server.forgetRequests(); });
        const Result result = run(each.arguments + QStringList{"--json"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(result.output));
        EXPECT_EQ(document.object(), (QJsonObject{{each.key, each.value}}));
        EXPECT_EQ(kindsOf(requests()), each.kinds);

        const Result table = run(each.arguments);
        EXPECT_EQ(table.status, 0);
        EXPECT_NE(table.output.find(each.in_table), std::string::npos) << table.output;
        EXPECT_EQ(table.output.find('\r'), std::string::npos);
    }
    EXPECT_EQ(run({"hosts", "show", "Stockholm"}).output.find(served.hosts.front().password.text()),
              std::string::npos);
}

TEST_F(CommandTest, ChangesReachTheServiceAsTheDialogsWouldSendThem) {
    folder.write("secret", "hemligt\r\nnot this\n");
    folder.write("login.scp", "\xEF\xBB\xBFogin: \nord:\r\n");
    Site now;
    const auto serves = [&now](const char* directory) {
        return std::ranges::count(now.spool_directories, VarText(directory)) == 1;
    };
    const QString secret = "uucp_password=@" + file("secret");
    // What each asks for, and what becomes of what the service serves.
    const std::pair<QStringList, std::function<bool(const Site&)>> cases[] = {
        // clang-format off
        {{"settings", "set", "mail_logging=no", "admin_port=600", "mail_log_period=90"}, [](const Site& s) { return s.settings.mail_logging == kFalse && s.settings.admin_port == 600 && s.settings.mail_log_period == 90; }},
        // One-digit minutes are filled up behind, as in the editor.
        {{"schedules", "add", "day=Friday", "interval=15min", "between_first=8:5", "delay=4"}, [](const Site& s) { const auto& a = s.schedules.back(); return a.day == 4 && a.timed == 0 && a.interval == 2 && a.between_first.text() == "08:50" && a.delay == 4; }},
        {{"schedules", "change", "3", "day=0", "timed=yes"}, [](const Site& s) { return s.schedules[2].day == 0 && s.schedules[2].timed == 1; }},
        {{"schedules", "delete", "1", "2", "1"}, [](const Site& s) { return s.schedules.front().record_number == 3; }},
        {{"hosts", "add", "display_name=Kiruna gruva", "mail_domain=kiruna.example", "remote_uucp_name=kiruna", "uucp_protocol=G", "packet_size=64", "active=yes", secret},
         [](const Site& s) { const HostRecord& a = s.hosts.back(); return a.display_name.text() == "Kiruna gruva" && a.uucp_protocol == 2 && a.packet_size == 2 && a.active == kTrue && a.retry_time == 5 && a.uucp_timeout == 12 && a.spool_directory.text() == "kiruna" && entryOf(a).uucp_password == "hemligt"; }},
        {{"hosts", "change", "stockholm", "connect_using=modem", "retry_time=0"}, [](const Site& s) { return s.hosts[2].connect_using == 0 && s.hosts[2].retry_time == 0; }},
        {{"hosts", "change", "Stockholm", "remote_uucp_name=solna", "--yes"}, [](const Site& s) { return s.hosts[2].spool_directory.text() == "solna"; }},
        {{"hosts", "delete", "växjö tryckeri"}, [&](const Site& s) { return s.hosts.size() == 5 && !serves("vaxjo"); }},
        {{"hosts", "delete", "Göteborgs lager", "--keep-directory"}, [&](const Site& s) { return s.hosts.size() == 4 && serves("gbglager"); }},
        {{"outbox", "delete", "D.corv0A18", "D.corv0A17"}, [](const Site& s) { return s.outbox.size() == 10; }},
        {{"outbox", "delete", "--all"}, [](const Site& s) { return s.outbox.empty(); }},
        {{"scripts", "save", "kiruna", file("login.scp")}, [](const Site& s) { return s.scripts.back().file_name.text() == "kiruna.scp" && s.scripts.back().text.scriptText() == "ogin: \r\nord:\r\n"; }},
        {{"login", "change", "karin", "--new-password-file", file("secret")}, [](const Site& s) { return s.login->accepts("karin", "hemligt"); }}};
    // clang-format on
    for (const auto& [arguments, is_so] : cases) {
        SCOPED_TRACE(arguments.join(' ').toStdString());
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.errors;
        now = site();
        EXPECT_TRUE(is_so(now));
    }
}

TEST_F(CommandTest, WhatIsRefusedOrMissingChangesNothing) {
    const QJsonArray hosts = recordsJson(site().hosts);
    folder.write("long.scp", std::string(5000, 'x'));
    folder.write("foreign.scp", "\xE2\x86\x92");
    struct Case {
        QStringList arguments;
        int status;
        std::string told;
    };
    const Case cases[] = {
        {{}, 2, "A command is missing."},
        {{"hosts", "list"}, 2, "Unexpected argument: list"},
        {{"backup"}, 2, "FILE"},
        {{"status", "--all"}, 2, "There is no option \"all\""},
        {{"status", "--timeout", "never"}, 2, "no number of seconds"},
        {{"--port", "70000", "status"}, 2, "is no port"},
        {{"settings", "set", "admin_port"}, 2, "NAME=VALUE"},
        {{"settings", "set", "admin_prt=1"}, 2, "no such field"},
        {{"settings", "set", "service_version=5"}, 2, "cannot be set"},
        {{"settings", "set", "unnamed_1=5"}, 2, "cannot be set"},
        {{"settings", "set", "admin_port=32767"}, 2, "port-number"},
        {{"settings", "set", "mail_logging=no", "admin_ip=1.2.3"}, 2, "IP-number"},
        {{"settings", "set", "uucp_prior_command=c:\\x"}, 2, "\\/*:?<>|"},
        {{"settings", "set", "mail_log_period=40000"}, 2, "-32768 - 32767"},
        {{"settings", "set", "doc_viewer=\u0416"}, 2, "no such character: \u0416"},
        {{"settings", "set", "doc_viewer=" + QString(5000, 'x')}, 2, "too much"},
        {{"schedules", "add", "day=8", "day=fredag"}, 2, "monday, tuesday"},
        {{"schedules", "add", "day=friday", "at_time=25:00"}, 2, "Invalid time!"},
        {{"schedules", "add", "day=weekdays", "at_time=07:30"}, 2, "already exist"},
        {{"schedules", "change", "x", "day=friday"}, 2, "no record number"},
        {{"schedules", "change", "77", "day=friday"}, 6, "There is no schedule 77."},
        {{"schedules", "delete", "1", "77"}, 6, "There is no schedule 77."},
        {{"hosts", "show", "Lund"}, 6, "There is no host \"Lund\"."},
        {{"hosts", "delete", "Stockholm", "Lund"}, 6, "Lund"},
        {{"hosts", "change", "Stockholm", "display_name=åre FJÄLLSTATION"}, 2, "already used"},
        {{"hosts", "change", "Stockholm", "uucp_timeout=1"}, 2, "at least 2 seconds"},
        {{"hosts", "change", "Stockholm", "packet_size=100"}, 2, "32, 64, 128"},
        {{"hosts", "change", "Stockholm", "mail_limit=1.5"}, 2, "-32768 - 32767"},
        {{"hosts", "change", "Stockholm", "active=7"}, 2, "yes, no"},
        {{"hosts", "change", "Stockholm", "remote_uucp_name=a b"}, 2, "node name"},
        {{"hosts", "change", "Stockholm", "password=geheim"}, 2, "from a file only: password=@"},
        {{"hosts", "change", "Stockholm", "password=@" + file("none")}, 2, "none"},
        {{"hosts", "change", "Stockholm", "phone_number=" + QString(61, '1')}, 2, "60 characters"},
        // The default of the question is No.
        {{"hosts", "change", "Stockholm", "remote_uucp_name=solna"}, 2, "--yes"},
        {{"hosts", "add", "mail_domain=x"}, 2, "'setup' name"},
        {{"hosts", "add", "display_name=x", "--yes", "--no"}, 2, "--yes and --no"},
        {{"outbox", "delete"}, 2, "--all"},
        {{"outbox", "delete", "D.corv0A17", "D.none"}, 6, "D.none"},
        {{"scripts", "show", "none"}, 6, "none"},
        {{"scripts", "save", "a/b", file("long.scp")}, 2, ""},
        {{"scripts", "save", "long", file("long.scp")}, 2, "too large"},
        {{"scripts", "save", "x", file("foreign.scp")}, 2, "no such character"},
        {{"scripts", "save", "x", file("")}, 2, "could not be read"},
        {{"login", "change", "karin"}, 2, "--new-password-file"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.arguments.join(' ').left(100).toStdString());
        const Result result = run(each.arguments);
        EXPECT_EQ(result.status, each.status);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors.find(each.told), std::string::npos) << result.errors;
        EXPECT_EQ(result.errors.find("geheim"), std::string::npos);
    }
    for (const auto& [operation, object_class] : kindsOf(requests()))
        EXPECT_EQ(operation, Operation::Get);
    EXPECT_EQ(recordsJson(site().hosts), hosts);
}

TEST_F(CommandTest, ScriptsAndPasswordsShareStandardInputLineByLine) {
    password = QString();
    EXPECT_EQ(run({"--password-file", "-", "scripts", "save", "x", "-"}, "tollwick\na\nb\n").status,
              0);
    EXPECT_EQ(site().scripts.back().text.scriptText(), "a\r\nb\r\n");
    EXPECT_EQ(run({"scripts", "show", "x", "--password-file", "-"}, "tollwick\n").output, "a\nb\n");
    EXPECT_EQ(run({"login", "change", "admin", "--new-password-file", "-", "--password-file", "-"},
                  "tollwick\nnytt\n")
                  .status,
              0);
    EXPECT_TRUE(site().login->accepts("admin", "nytt"));
}

TEST_F(CommandTest, WatchingEndsWithTheTransportAndWaitingEvenWhenThereIsNothingToSend) {
    service.run([](simulator::Server& server) {
        server.site().outbox.resize(1);
        server.site().outbox[0].size = 150; // some seconds of the service's time
    });
    QProcess watch;
    start(watch, {"status", "--watch", "--json"});
    EXPECT_TRUE(watch.waitForReadyRead());
    EXPECT_EQ(run({"transport", "start", "--wait"}).status, 0);
    EXPECT_TRUE(site().outbox.empty());
    const Result watched = resultOf(watch);
    EXPECT_EQ(watched.status, 0);
    const auto last = QString::fromStdString(watched.output).trimmed().split('\n').constLast();
    EXPECT_EQ(QJsonDocument::fromJson(last.toUtf8())["status"]["queued_files"].toInt(-1), 0);

    EXPECT_EQ(run({"transport", "start", "--wait"}).status, 0);
    EXPECT_EQ(run({"transport", "cancel"}).status, 0);
}

TEST_F(CommandTest, ControlCharactersOfTheServiceDoNotReachTheTerminal) {
    service.run(
        [](simulator::Server& server) { server.site().hosts[0].mail_domain = "\x1b[2J\n"; });
    const Result result = run({"hosts"});
    EXPECT_EQ(result.output.find('\x1b'), std::string::npos);
    EXPECT_EQ(std::ranges::count(result.output, '\n'), 6);
}

TEST(Output, KnowsHowWideATextIsShown) {
    for (const auto& [text, width] :
         {std::pair{"Åre", 3U}, {"e\u0301", 1U}, {"日本", 4U}, {"\U0001F4EB", 2U}, {"", 0U}})
        EXPECT_EQ(displayWidth(text), width) << text;
}

#ifdef Q_OS_UNIX
TEST_F(CommandTest, CtrlCEndsItAtOnce) {
    QProcess watch;
    start(watch, {"status", "--watch"});
    EXPECT_TRUE(watch.waitForReadyRead());
    ::kill(static_cast<pid_t>(watch.processId()), SIGINT);
    EXPECT_EQ(resultOf(watch).status, 130);

    // Nor does a service that is silent keep it.
    setFaults({.never_reply = true, .only_class = ObjectClass::Host});
    QProcess hosts;
    start(hosts, {"hosts"});
    while (kindsOf(requests()).count({Operation::Get, ObjectClass::Host}) == 0)
        QThread::msleep(5);
    ::kill(static_cast<pid_t>(hosts.processId()), SIGINT);
    EXPECT_EQ(resultOf(hosts).status, 130);
}

TEST_F(CommandTest, OutputThatCannotBeWrittenIsAnError) {
    QProcess program;
    program.setStandardOutputFile("/dev/full");
    start(program, {"hosts"});
    const Result result = resultOf(program);
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.errors.find("output"), std::string::npos);
}

TEST(Completion, KnowsEveryCommandAndEverySetting) {
    QFile file(TOLLWICK_COMPLETION);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::string text = file.readAll().replace('\n', ' ').toStdString();
    const auto isThere = [&](std::string_view word) {
        return text.find(' ' + std::string(word) + ' ') != std::string::npos;
    };
    for (const Command& command : commands()) {
        const std::string name(command.name);
        EXPECT_TRUE(isThere(name.substr(0, name.find(' ')))) << name;
        EXPECT_TRUE(isThere(name.substr(name.find(' ') + 1))) << name;
        for (const CommandOption& option : command.options)
            EXPECT_TRUE(isThere("--" + std::string(option.name))) << option.name;
    }
    forEachField<SettingsRecord>([&](const auto& field) {
        if (!field.name.starts_with("unnamed_") && field.name != "service_version") {
            EXPECT_TRUE(isThere(field.name)) << field.name;
        }
    });
}
#endif

} // namespace
} // namespace tollwick::ctl
