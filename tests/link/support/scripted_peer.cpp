#include "tests/link/support/scripted_peer.h"

#include "tests/support/hex.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/socket.h>
using SOCKET = int;
#endif

namespace tollwick {
namespace {

constexpr int kSending = 1; // the half of a connection that shutdown() ends

std::vector<ScriptedPeer::Acts> greeted(std::vector<ScriptedPeer::Acts> answers) {
    answers.insert(answers.begin(), script::kGreeting);
    return answers;
}

} // namespace

ScriptedPeer::ScriptedPeer(std::vector<Acts> answers)
    : ScriptedPeer(std::vector<std::vector<Acts>>(1, greeted(std::move(answers)))) {}

ScriptedPeer::ScriptedPeer(std::vector<std::vector<Acts>> connections)
    : script_(std::move(connections)) {
    EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
    QObject::connect(&server_, &QTcpServer::newConnection, [this] { accept(); });
}

void ScriptedPeer::accept() {
    QTcpSocket* socket = server_.nextPendingConnection();
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    const std::size_t index = std::min(connections_.size(), script_.size() - 1);
    Connection& connection = connections_.emplace_back(Connection{socket, script_[index]});
    QObject::connect(socket, &QTcpSocket::disconnected, [this] { ++ended_; });
    QObject::connect(socket, &QTcpSocket::readyRead, [this, &connection] { read(connection); });
    act(connection);
}

void ScriptedPeer::read(Connection& connection) {
    connection.framer.append(connection.socket->readAll().toStdString());
    for (std::string text; connection.framer.takeLine(text); act(connection)) {
        Comrecord request;
        decodeLine(text, kKey, request);
        requests_.push_back(describe(request));
    }
}

void ScriptedPeer::act(Connection& connection) {
    if (connection.next < connection.script.size())
        std::ranges::copy(connection.script[connection.next++], std::back_inserter(connection.due));
    goOn(connection);
}

void ScriptedPeer::goOn(Connection& connection) {
    std::deque<Act>& due = connection.due;
    while (!due.empty() && due.front()(*this, *connection.socket))
        due.pop_front();
}

void ScriptedPeer::release() {
    ++releases_;
    for (Connection& connection : connections_)
        goOn(connection);
}

void ScriptedPeer::answerAtOnce() const {
    for (const Connection& connection : connections_)
        connection.socket->waitForReadyRead(0);
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
        socket.flush();
        return true;
    };
}
bool await(ScriptedPeer& peer, QTcpSocket&) {
    return peer.takeRelease();
}
bool close(ScriptedPeer&, QTcpSocket& socket) {
    socket.disconnectFromHost();
    return true;
}
bool endSending(ScriptedPeer&, QTcpSocket& socket) {
    return ::shutdown(static_cast<SOCKET>(socket.socketDescriptor()), kSending) == 0;
}
std::string line(const Comrecord& reply) {
    return encodeLine(reply, ScriptedPeer::kKey, 77);
}

} // namespace script
} // namespace tollwick
