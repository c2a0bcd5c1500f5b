// Every request, driven through the real window, meets every way in which a service can fail it.
// One table says what comes of each; afterwards the window is usable and a second login works.
#include "link/link_receiver.h"
#include "link/scramble.h"
#include "tests/ui/support/console_test.h"

#include <QPointer>
#include <QTcpSocket>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace tollwick {
namespace {

enum class Fault {
    Refused,
    NoReply,
    ClosedBefore,
    ClosedWithinLine,
    Reset,
    SingleBytes,
    TwoReplies,
    ZeroFirst,
    UnknownStatus,
    GarbageLine,
    OverlongLine,
    LateReply,
    TruncatedBlock,
    LongStrings,
};
constexpr const char* kFaultNames[] = {
    "refused",       "no reply",    "closed before",   "closed within the line", "reset",
    "single bytes",  "two replies", "status 0 first",  "unknown status",         "garbage line",
    "overlong line", "late reply",  "truncated block", "strings past the block"};

// How a request comes about: in a login, or from the window by node, row and command.
struct Cause {
    const char* node; // nullptr: a login
    int row;
    const char* command;
    const char* steps; // in the dialog that comes up, if one does
};

// What comes of each fault, in the order of the faults: D done, as if nothing had been or with
// nothing told; F the failure told, the link closed; R the login rejected.
struct Case {
    const char* name;
    ObjectClass object_class;
    Operation operation;
    std::optional<Text> failure; // none: the save of a host, told in English in every language
    Cause cause;
    const char* outcomes;
};

constexpr Cause kLogin{nullptr, 0, nullptr, nullptr};
constexpr Cause kHost{"uucphosts", 0, "PropertiesMenu", "CancelButton"};
constexpr Cause kDeleteHost{"uucphosts", 0, "DeleteMenu", ""};

using C = ObjectClass;
using O = Operation;
using T = Text;
// clang-format off
const Case kCases[] = {
    {"Authenticate",        C::Login,         O::Authenticate, T::FailAuthenticate,        kLogin,                                        "FFFFFDDDRFFFDD"},
    {"NewLogin",            C::Login,         O::Save,         T::FailNewLogin,            {"loginaccount", 0, "PropertiesMenu", "tbPassword=x|tbPasswordAgain=x|OkButton"}, "FFFFFDDDDFFFDD"},
    {"GetSettings",         C::Settings,      O::Get,          T::FailSettings,            kLogin,                                        "FFFFFDDDDFFFDD"},
    {"SaveSettings",        C::Settings,      O::Save,         T::FailSettings,            {"logs", 0, "Toggmenu", ""},                   "FFFFFDDDDFFFDD"},
    {"GetAllSchedules",     C::Schedule,      O::Get,          T::FailGetSchedules,        kLogin,                                        "FFFFFDDDFFFFDD"},
    {"SaveSchedule",        C::Schedule,      O::Save,         T::FailSaveSchedule,        {"schedule", 0, "PropertiesMenu", "Timed=08:31|OkButton"}, "FFFFFDDDFFFFDD"},
    {"DeleteSchedule",      C::Schedule,      O::Delete,       T::FailDeleteSchedule,      {"schedule", 0, "DeleteMenu", ""},             "FFFFFDDDFFFFDD"},
    {"GetAllHosts",         C::Host,          O::Get,          T::FailGetHosts,            kLogin,                                        "FFFFFDDDFFFFDD"},
    {"SaveHost",            C::Host,          O::Save,         {},                         {"uucphosts", 2, "PropertiesMenu", "HostSetupNameTxt=Ny|OkButton"}, "FFFFFDDDFFFFDD"},
    {"DeleteHost",          C::Host,          O::Delete,       T::FailDeleteHost,          kDeleteHost,                                   "FFFFFDDDDFFFDD"},
    {"DeleteHostDirectory", C::HostDirectory, O::Delete,       T::FailDeleteHostDirectory, kDeleteHost,                                   "FFFFFDDDDFFFDD"},
    {"GetAllOutbox",        C::OutboxMail,    O::Get,          T::FailGetOutbox,           {"outbox", 0, "Refreshmenu", ""},              "FFFFFDDDFFFFDD"},
    {"DeleteOutboxMail",    C::OutboxMail,    O::Delete,       T::FailDeleteMail,          {"outbox", 0, "DeleteMenu", ""},               "FFFFFDDDDFFFDD"},
    // Its time-out is silent.
    {"GetUucpStatus",       C::UucpStatus,    O::Get,          T::FailGetStatus,           {"uucpmonitor", -1, nullptr, ""},              "FDFFFDDDDDFDDD"},
    {"SendUucpCommand",     C::UucpCommand,   O::Add,          T::FailSendCommand,         {"uucpmonitor", -1, "UucpTransportNowMenu", ""}, "FFFFFDDDFFFFDD"},
    {"GetAllTapiLocations", C::TapiLocation,  O::Get,          T::FailTapiLocations,       kHost,                                         "FFFFFDDDFFFFDD"},
    {"GetAllTapiDevices",   C::TapiDevice,    O::Get,          T::FailTapiDevices,         kHost,                                         "FFFFFDDDFFFFDD"},
    {"GetAllRasEntries",    C::RasEntry,      O::Get,          T::FailRasEntries,          kHost,                                         "FFFFFDDDFFFFDD"},
    {"GetScript",           C::Script,        O::Get,          T::FailGetScript,           kHost,                                         "FFFFFDDDFFFFDD"},
    {"SaveScript",          C::Script,        O::Save,         T::FailSaveScript,          {"uucphosts", 0, "PropertiesMenu", "OkButton"}, "FFFFFDDDFFFFDD"},
    {"GetAllScriptFile",    C::ScriptFile,    O::Get,          T::FailGetScriptFiles,      {"uucphosts", 0, "PropertiesMenu", "BläddraButton"}, "FFFFFDDDFFFFDD"},
};
// clang-format on

void PrintTo(const Case& row, std::ostream* out) {
    *out << row.name;
}

// Milliseconds without a reply after which everything that the service sent has arrived.
constexpr int kQuietMs = 100;

class FaultMatrixTest : public ConsoleTest, public testing::WithParamInterface<Case> {
protected:
    FaultMatrixTest() { boxes.takeAll(told_); }

    // What the service does with the next reply that the case concerns. Runs on its thread.
    void deliver(Fault fault, QTcpSocket& socket, Comrecord reply, const std::string& key) {
        const auto lineOf = [&](const Comrecord& record) {
            return QByteArray::fromStdString(encodeLine(record, key, 1));
        };
        const QByteArray line = lineOf(reply);
        switch (fault) {
        case Fault::Refused:
        case Fault::UnknownStatus:
            reply.Operation = fault == Fault::Refused ? result::Refused : 77;
            socket.write(lineOf(reply));
            break;
        case Fault::NoReply:
            break;
        case Fault::LateReply:
            late_socket_ = &socket;
            late_line_ = line;
            break;
        case Fault::ClosedWithinLine:
            socket.write(line.first(line.size() / 2));
            [[fallthrough]];
        case Fault::ClosedBefore:
            socket.disconnectFromHost();
            break;
        case Fault::Reset: {
            const linger at_once{1, 0};
            setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER,
                       reinterpret_cast<const char*>(&at_once), sizeof at_once);
            socket.abort();
            break;
        }
        case Fault::SingleBytes:
            for (const char byte : line) {
                socket.write(&byte, 1);
                socket.flush();
            }
            break;
        case Fault::TwoReplies:
            socket.write(line + line);
            break;
        case Fault::ZeroFirst:
            socket.write(lineOf(EmptyComrecord) + line);
            break;
        case Fault::GarbageLine:
            socket.write("?!\r\n");
            break;
        case Fault::OverlongLine:
            socket.write(QByteArray(2 + 2 * 4106 + 3, '0'));
            break;
        case Fault::TruncatedBlock:
            std::fill(reply.ComrecordData.begin() + 3, reply.ComrecordData.end(), '\0');
            socket.write(lineOf(reply));
            break;
        case Fault::LongStrings:
            reply.ComrecordData.fill('\x7F');
            socket.write(lineOf(reply));
            break;
        }
        struck_ = true;
    }

    void strikeWith(Fault fault) {
        struck_ = false;
        told_.clear();
        onServer([&](simulator::Server& server) {
            server.faults().only_class = GetParam().object_class;
            server.faults().only_operation = GetParam().operation;
            server.faults().deliver = [=, this](QTcpSocket& socket, const Comrecord& reply,
                                                const std::string& key) {
                deliver(fault, socket, reply, key);
            };
        });
    }

    // Runs `work` and works the dialog that it brings up, which is closed after its steps. Time
    // runs out for a reply that does not come.
    void drive(const Work& work, const std::string& steps) {
        QElapsedTimer quiet;
        QTimer clockwork; // not the timer below: a timer does not tick within its own work
        clockwork.callOnTimeout([&] {
            auto* picker = QApplication::activeModalWidget();
            if (picker && picker->objectName() == "ScriptFileForm" &&
                !context().requests.isRunning())
                qobject_cast<QDialog*>(picker)->reject();
            if (!struck_ || !context().link.isWaiting())
                quiet.invalidate();
            else if (!quiet.isValid())
                quiet.start();
            else if (quiet.hasExpired(kQuietMs)) // all that was sent has arrived
                runOutOfTime();
        });
        clockwork.start(5);
        QPointer<QDialog> worked;
        QTimer worker;
        worker.callOnTimeout([&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || qobject_cast<QMessageBox*>(dialog) || context().requests.isRunning())
                return;
            const bool is_login = dialog->objectName() == "frmLogin";
            if (!worked && is_login)
                type(std::string(simulator::kSamplePassword) + '\n');
            else if (!worked && context().link.isOpen())
                play(*dialog, steps);
            worked = dialog;
            if (dialog->isVisible())
                dialog->reject();
        });
        worker.start(5);
        work();
        EXPECT_TRUE(waitUntil([&] { return struck_ && !context().requests.isBusy(); }));
    }

    void cause() {
        const Cause& cause = GetParam().cause;
        if (!cause.node)
            drive([this] { trigger("LoginMenu"); }, "");
        else if (!cause.command)
            drive([this] { EXPECT_TRUE(waitUntil([this] { return tick(), struck_.load(); })); },
                  "");
        else
            drive([&] { trigger(cause.command); }, cause.steps);
    }

    char outcome() {
        const std::string failure =
            GetParam().failure
                ? std::string(context().text(*GetParam().failure))
                : "Unable to transmit data to the Tollwick Service!\r\nThe connection "
                  "is terminated!";
        const auto wasTold = [this](std::string text) {
            if (const auto at = text.find("\r\n"); at != std::string::npos)
                text.replace(at, 2, "\n");
            return std::ranges::count(told_, text) == 1;
        };
        if (wasTold(failure))
            return context().link.isOpen() ? '!' : 'F';
        if (wasTold(std::string(context().text(Text::AuthenticationFailure))))
            return 'R';
        return 'D';
    }

    std::vector<std::string> told_;
    std::atomic<bool> struck_ = false;
    QPointer<QTcpSocket> late_socket_; // lives on the service's thread
    QByteArray late_line_;
};

TEST_P(FaultMatrixTest, EndsAsTheTableSays) {
    const Case& row = GetParam();
    ASSERT_TRUE(start());
    for (std::size_t column = 0; column < std::size(kFaultNames); ++column) {
        SCOPED_TRACE(kFaultNames[column]);
        restore();
        if (row.cause.node) {
            logIn();
            clickNode(row.cause.node);
            if (row.cause.row >= 0)
                clickRow(row.cause.row);
        }
        strikeWith(static_cast<Fault>(column));
        cause();
        EXPECT_EQ(outcome(), row.outcomes[column]) << testing::PrintToString(told_);
        onServer([this](simulator::Server&) {
            if (late_socket_)
                late_socket_->write(late_line_);
        });

        // The window goes on, and after a log off there is a second login. No other request is made
        // on this connection: lines carry no number, so a reply too many would be taken for its
        // own.
        restore();
        told_.clear();
        if (context().link.isOpen()) {
            clickNode("options");
            EXPECT_EQ(list().model()->rowCount(), 3);
            EXPECT_TRUE(told_.empty()) << testing::PrintToString(told_);
            trigger("LogOffMenu");
        }
        ASSERT_TRUE(isLoggedOut());
        logIn();
        clickNode("outbox");
        ASSERT_EQ(list().model()->rowCount(), static_cast<int>(site().outbox.size()));
        trigger("LogOffMenu");
        ASSERT_TRUE(isLoggedOut());
    }
}

INSTANTIATE_TEST_SUITE_P(Requests, FaultMatrixTest, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace tollwick
