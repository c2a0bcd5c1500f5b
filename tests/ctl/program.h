// Runs tollwickctl as a process against a stand-in service in this one.
#pragma once

#include "simulator/sample_site.h"
#include "simulator/server_thread.h"
#include "tests/support/temporary_folder.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace tollwick::ctl {

struct Result {
    int status = -1;
    std::string output;
    std::string errors;
};

class ProgramTest : public testing::Test {
protected:
    // The program with these arguments and this standard input, with the sample site's password.
    Result run(const QStringList& arguments, const std::string& input = {}) {
        QProcess program;
        start(program, arguments);
        program.write(QByteArray::fromStdString(input));
        program.closeWriteChannel();
        return resultOf(program);
    }
    void start(QProcess& program, const QStringList& arguments) {
        setUp(program);
        program.start(TOLLWICK_CTL, QStringList{"--port", QString::number(port)} + arguments);
        EXPECT_TRUE(program.waitForStarted());
    }
    // The settings and the password that it finds.
    void setUp(QProcess& program) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", QString::fromStdString(folder.text()));
        environment.remove("TOLLWICK_PASSWORD");
        if (!password.isNull())
            environment.insert("TOLLWICK_PASSWORD", password);
        program.setProcessEnvironment(environment);
    }
    static Result resultOf(QProcess& program) {
        EXPECT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return {program.exitCode(), program.readAllStandardOutput().toStdString(),
                program.readAllStandardError().toStdString()};
    }
    // What the service holds now.
    Site site() {
        return service.run([](simulator::Server& server) { return server.site(); });
    }
    std::vector<simulator::Request> requests() {
        return service.run([](simulator::Server& server) { return server.requests(); });
    }
    void setFaults(const simulator::Faults& faults) {
        service.run([&](simulator::Server& server) { server.faults() = faults; });
    }
    QString file(std::string_view name) const { return QString::fromStdString(folder.text(name)); }

    TemporaryFolder folder;
    // A second of the service takes 50 milliseconds.
    simulator::ServerThread service{simulator::sampleSite(),
                                    [] { return simulator::Transport::steadyClock() * 20; }};
    quint16 port = service.port();
    QString password = "tollwick";
};

} // namespace tollwick::ctl
