// Every request, driven through the real window, meets every way in which a service can fail it.
// One table says what comes of each; afterwards the window is usable and a second login works.
#include "tests/ui/support/console_test.h"
#include "wire/link_receiver.h"
#include "wire/scramble.h"

#include <QPointer>
#include <QTcpSocket>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace tollwick {
namespace {

// The next reply that a case concerns, at the moment at which the service would send it.
struct Strike {
    QTcpSocket& socket;
    Comrecord reply;
    const std::string& key;
    std::pair<QPointer<QTcpSocket>, QByteArray>& late; // what is sent when the case is over

    [[nodiscard]] QByteArray lineOf(const Comrecord& record) const {
        return QByteArray::fromStdString(encodeLine(record, key, 1));
    }
    [[nodiscard]] QByteArray line() const { return lineOf(reply); }
};

void reset(QTcpSocket& socket) {
    const linger at_once{1, 0};
    setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER,
               reinterpret_cast<const char*>(&at_once), sizeof at_once);
    socket.abort();
}

struct Fault {
    const char* name;
    void (*strike)(Strike); // runs on the service's thread
};
// clang-format off
const Fault kFaults[] = {
    {"refused", [](Strike s) { s.reply.Operation = result::Refused; s.socket.write(s.line()); }},
    {"no reply", [](Strike) {}},
    {"closed before", [](Strike s) { s.socket.disconnectFromHost(); }},
    {"closed within the line", [](Strike s) { s.socket.write(s.line().first(s.line().size() / 2)); s.socket.disconnectFromHost(); }},
    {"reset", [](Strike s) { reset(s.socket); }},
    {"single bytes", [](Strike s) { for (const char byte : s.line()) { s.socket.write(&byte, 1); s.socket.flush(); } }},
    {"two replies", [](Strike s) { s.socket.write(s.line() + s.line()); }},
    {"status 0 first", [](Strike s) { s.socket.write(s.lineOf(EmptyComrecord) + s.line()); }},
    {"unknown status", [](Strike s) { s.reply.Operation = 77; s.socket.write(s.line()); }},
    {"garbage line", [](Strike s) { s.socket.write("?!\r\n"); }},
    {"overlong line", [](Strike s) { s.socket.write(QByteArray(2 + 2 * 4106 + 3, '0')); }},
    {"late reply", [](Strike s) { s.late = {&s.socket, s.line()}; }},
    {"truncated block", [](Strike s) { std::fill(s.reply.ComrecordData.begin() + 3, s.reply.ComrecordData.end(), '\0'); s.socket.write(s.line()); }},
    {"strings past the block", [](Strike s) { s.reply.ComrecordData.fill('\x7F'); s.socket.write(s.line()); }}};
// clang-format on

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
    {"GetSettings",         C::Settings,      O::Get,          T::FailSettings,            kLogin,                                        "FFFFFDDDFFFFDF"},
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
    {"GetUucpStatus",       C::UucpStatus,    O::Get,          T::FailGetStatus,           {"uucpmonitor", -1, nullptr, ""},              "FDDDDDDDDDDDDD"},
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

    void strikeWith(const Fault& fault) {
        struck_ = false;
        told_.clear();
        onServer([&](simulator::Server& server) {
            server.faults().only_class = GetParam().object_class;
            server.faults().only_operation = GetParam().operation;
            server.faults().deliver = [&fault, this](QTcpSocket& socket, const Comrecord& reply,
                                                     const std::string& key) {
                fault.strike({socket, reply, key, late_});
                struck_ = true;
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
        const auto wasTold = [this](const std::string& text) {
            return std::ranges::count(told_, text) == 1;
        };
        if (wasTold(GetParam().failure ? english(*GetParam().failure) : unable("transmit data to")))
            return context().link.isOpen() ? '!' : 'F';
        return wasTold(english(Text::AuthenticationFailure)) ? 'R' : 'D';
    }

    std::vector<std::string> told_;
    std::atomic<bool> struck_ = false;
    std::pair<QPointer<QTcpSocket>, QByteArray> late_; // the socket is the service's thread's
};

// Requests of one kind fail alike: these meet every fault, the others those that tell the kinds
// apart.
bool meetsEvery(std::string_view request) {
    static constexpr std::string_view kRepresentatives[] = {"Authenticate", "GetSettings",
                                                            "SaveSchedule", "DeleteHost",
                                                            "GetAllOutbox", "GetUucpStatus"};
    return std::ranges::find(kRepresentatives, request) != std::end(kRepresentatives);
}
bool tellsApart(std::string_view fault) {
    static constexpr std::string_view kTelling[] = {"refused", "no reply", "unknown status",
                                                    "truncated block"};
    return std::ranges::find(kTelling, fault) != std::end(kTelling);
}

TEST_P(FaultMatrixTest, EndsAsTheTableSays) {
    const Case& row = GetParam();
    ASSERT_TRUE(start());
    ASSERT_EQ(std::string_view(row.outcomes).size(), std::size(kFaults));
    for (std::size_t column = 0; column < std::size(kFaults); ++column) {
        if (!meetsEvery(row.name) && !tellsApart(kFaults[column].name))
            continue;
        SCOPED_TRACE(kFaults[column].name);
        restore();
        if (row.cause.node) {
            logIn();
            clickNode(row.cause.node);
            if (row.cause.row >= 0)
                clickRow(row.cause.row);
        }
        strikeWith(kFaults[column]);
        cause();
        EXPECT_EQ(outcome(), row.outcomes[column]) << testing::PrintToString(told_);
        onServer([this](simulator::Server&) {
            if (late_.first)
                late_.first->write(late_.second);
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
