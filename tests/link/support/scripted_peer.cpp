#include "tests/link/support/scripted_peer.h"

#include "link/link_receiver.h"
#include "tests/support/hex.h"

#include <QTcpServer>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/socket.h>
using SOCKET = int;
#endif

namespace tollwick {
namespace {

constexpr int kStopCheck = 10; // milliseconds between two looks at `stopping_`
constexpr int kSending = 1;    // the half of a connection that shutdown() ends

SOCKET handleOf(const QTcpSocket& socket) {
    return static_cast<SOCKET>(socket.socketDescriptor());
}

std::vector<ScriptedPeer::Acts> greeted(std::vector<ScriptedPeer::Acts> answers) {
    answers.insert(answers.begin(), script::kGreeting);
    return answers;
}

} // namespace

ScriptedPeer::ScriptedPeer(std::vector<Acts> answers)
    : ScriptedPeer(std::vector<std::vector<Acts>>(1, greeted(std::move(answers)))) {}

ScriptedPeer::ScriptedPeer(std::vector<std::vector<Acts>> connections)
    : script_(std::move(connections)), thread_(QThread::create([this] { run(); })) {
    thread_->start();
    listening_.acquire();
}

ScriptedPeer::~ScriptedPeer() {
    stopping_ = true;
    thread_->wait();
}

bool ScriptedPeer::awaitRelease() {
    while (!releases_.tryAcquire(1, kStopCheck))
        if (stopping_)
            return false;
    return true;
}

std::vector<std::string> ScriptedPeer::requests() const {
    const QMutexLocker lock(&mutex_);
    return requests_;
}

void ScriptedPeer::run() {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    port_ = server.serverPort();
    listening_.release();
    while (!stopping_) {
        if (!server.waitForNewConnection(kStopCheck))
            continue;
        const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const std::size_t index = connections_++;
        serve(*socket, script_[std::min(index, script_.size() - 1)]);
        socket->abort();
        ++ended_;
    }
}

void ScriptedPeer::serve(QTcpSocket& socket, const std::vector<Acts>& script) {
    std::size_t next = 0;
    const auto goesOn = [&] {
        if (next < script.size())
            for (const Act& act : script[next++])
                if (!act(*this, socket))
                    return false;
        return true;
    };
    LineFramer framer;
    std::string text;
    for (bool open = goesOn(); open && !stopping_;) {
        if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(kStopCheck))
            open = socket.state() == QAbstractSocket::ConnectedState;
        framer.append(socket.readAll().toStdString());
        while (open && framer.takeLine(text)) {
            Comrecord request;
            decodeLine(text, kKey, request);
            {
                const QMutexLocker lock(&mutex_);
                requests_.push_back(describe(request));
            }
            open = goesOn();
        }
    }
}

std::string describe(const Comrecord& record) {
    const std::string data =
        toHex(withoutTrailingBlanks({record.ComrecordData.data(), record.ComrecordData.size()}));
    return std::to_string(record.Operation) + "/" + std::to_string(record.ObjectClass) +
           " number " + std::to_string(record.RecordNumber) + " length " +
           std::to_string(record.RecordLength) + (data.empty() ? "" : " data " + data);
}

namespace script {

ScriptedPeer::Act send(std::string_view bytes) {
    return [bytes = std::string(bytes)](ScriptedPeer&, QTcpSocket& socket) {
        socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
        while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten())
            ;
        return socket.bytesToWrite() == 0;
    };
}
bool await(ScriptedPeer& peer, QTcpSocket&) {
    return peer.awaitRelease();
}
bool close(ScriptedPeer&, QTcpSocket&) {
    return false;
}
bool reset(ScriptedPeer&, QTcpSocket& socket) {
    const linger at_once{1, 0};
    ::setsockopt(handleOf(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&at_once),
                 sizeof at_once);
    return false;
}
bool endSending(ScriptedPeer&, QTcpSocket& socket) {
    return ::shutdown(handleOf(socket), kSending) == 0;
}
std::string line(const Comrecord& reply) {
    return encodeLine(reply, ScriptedPeer::kKey, 77);
}

} // namespace script
} // namespace tollwick
