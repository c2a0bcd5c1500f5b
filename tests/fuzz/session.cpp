// A whole session over a socket, with a service whose replies the fuzzer chooses.
#include "link/login_sequence.h"
#include "tests/fuzz/fuzz.h"
#include "wire/scramble.h"

#include <QCoreApplication>
#include <QTcpServer>

namespace tollwick {

// Answers when the console locks its input, which is when it begins to wait. Whenever the console
// looks at the clock it is 20 seconds later, so that the second look ends a wait of 30.
struct Peer : InputLock, Clock, Progress {
    explicit Peer(Input& choices) : input(choices) {
        server.listen(QHostAddress::LocalHost);
        QObject::connect(&server, &QTcpServer::newConnection, [this] { greet(); });
    }
    void lockInput() override { ++depth, answer(); }
    void unlockInput() override { --depth; }
    [[nodiscard]] LocalTime now() const override { return {1999, 3, 7, 0, 0, looks++ * 20, 0}; }
    void setInfo(std::string_view) override {}
    void setBusy(bool) override {}
    void setCount(std::optional<WorkCount> count) override { fetching = count.has_value(); }
    void answer() {
        if (!socket || (socket->bytesAvailable() == 0 && !socket->waitForReadyRead(0)))
            return;
        requests.append(socket->readAll().toStdString());
        for (std::string line; requests.takeLine(line); reply())
            check(line.size() >= 2 + 2 * 3 && unscramble(key, line)[0] % 10 == 0);
        check(requests.buffered().empty());
        socket->flush();
    }
    void greet() {
        socket = server.nextPendingConnection();
        key = input.take(kSessionKeySize);
        socket->write(QByteArray::fromStdString(key));
        if (key.size() != kSessionKeySize) // saves the pauses before further attempts
            QTimer::singleShot(0, &link, [this] { link.giveUp(); });
    }
    void reply() {
        constexpr Integer kResults[] = {1, 1, 1, 3, 2, 0, -1, 8, 9, 4711};
        const int choice = input.rest.empty() ? 14 : input.number() % 16;
        if (choice < 10) {
            Comrecord record{kResults[choice], 0, input.number<std::int8_t>(), 0, {}};
            input.text().copy(record.ComrecordData.data(), kDataBlockSize);
            socket->write(QByteArray::fromStdString(encodeLine(record, key, 1)));
        } else if (choice < 12) {
            socket->write(choice == 10 ? QByteArray::fromStdString(input.text())
                                       : QByteArray(256 * input.number(), 'A'));
        } else if (choice == 12) {
            reply(), reply();
        } else if (choice < 15) {
            choice == 13 ? socket->disconnectFromHost() : socket->abort();
        } // and silence
    }

    Input& input;
    ServiceLink link{*this};
    std::string key;
    LineFramer requests;
    QTcpServer server;
    QTcpSocket* socket = nullptr;
    bool fetching = false;
    int depth = 0;
    mutable int looks = 0;
};

void fuzz(Input& input) {
    static int no_arguments = 0;
    static const QCoreApplication application(no_arguments, nullptr);
    SilentPrompter prompter;
    const StringTable texts(kEnglish);
    ServiceData data;
    Peer peer(input);
    Requests requests(peer.link, data, texts, prompter, peer);
    peer.link.setInputLock(peer);
    const ConnectionSettings connection{
        "127.0.0.1", std::to_string(peer.server.serverPort()), {}, 30, {}};
    ServiceContext context{texts, prompter, peer, peer.link, data, requests};
    data.user_id = input.text();
    LoginSequence(context, connection).run();
    check(prompter.boxes <= 1);

    bool flag = false;
    Requests::Script script;
    int awaited = 0;
    std::vector<std::string> names;
    const std::function<Integer()> kinds[] = {
        [&] { return requests.txNewLogin(); },
        [&] { return requests.txSaveSettings() == kTrue ? kTrue : kFalse; },
        [&] { return requests.txSaveSchedule(input.number() % 2); },
        [&] { return requests.txDeleteSchedule(input.number<Long>()); },
        [&] { return requests.txSaveHost(input.number() % 2); },
        [&] { return requests.txDeleteHostDirectory(input.text()); },
        [&] { return requests.txDeleteOutboxMail(OutboxRecord(), flag); },
        [&] { return requests.txSendUucpCommand(), peer.link.isOpen() ? kFalse : kTrue; },
        [&] { return requests.txGetAllTapiLocations(names); },
        [&] { return requests.txGetScript(input.text(), script); },
        [&] { return requests.txSaveScript("a", input.text()); },
        [&] { return requests.RetrieveAll(); },
        [&] { return ++awaited, requests.txGetUucpStatus([&](int) { --awaited; }), kFalse; }};
    while (peer.link.isOpen() && !input.rest.empty()) {
        const Integer failed = kinds[input.number() % std::size(kinds)]();
        peer.answer(); // the status, for which no input is locked
        check(peer.depth == 0 && !requests.isRunning() && !peer.fetching &&
              (failed == kFalse || !peer.link.isOpen()));
    }
    peer.link.settle();
    check(awaited == 0 && !requests.isBusy());
}

} // namespace tollwick
