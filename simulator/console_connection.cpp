#include "simulator/console_connection.h"

#include "wire/scramble.h"

#include <QRandomGenerator>
#include <QTcpSocket>

namespace tollwick::simulator {
namespace {

constexpr qint64 kReadAtOnce = 64 * 1024;
// A console that lets its replies pile up is let go.
constexpr qint64 kMaxUnsent = 1024 * 1024;

// Printable characters without the blank.
constexpr int kFirstKeyCode = 33;
constexpr int kLastKeyCode = 126;

} // namespace

ConsoleConnection::ConsoleConnection(QTcpSocket* socket, Handler handler, QObject* parent)
    : QObject(parent), socket_(socket), handler_(std::move(handler)) {
    socket_->setParent(this);
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket_->setReadBufferSize(kReadAtOnce);
    connect(socket_, &QTcpSocket::readyRead, this, &ConsoleConnection::readLines);
    connect(socket_, &QTcpSocket::disconnected, this, &ConsoleConnection::closed);
}

void ConsoleConnection::sendKey() {
    key_.resize(kSessionKeySize);
    for (char& c : key_)
        c = static_cast<char>(QRandomGenerator::global()->bounded(kFirstKeyCode, kLastKeyCode + 1));
    send(QByteArray::fromStdString(key_));
}

void ConsoleConnection::send(const QByteArray& bytes) {
    if (socket_->state() != QAbstractSocket::ConnectedState)
        return;
    socket_->write(bytes);
    socket_->flush();
}

void ConsoleConnection::close() {
    socket_->abort();
}

void ConsoleConnection::readLines() {
    std::string line;
    while (socket_->bytesAvailable() > 0) {
        framer_.append(socket_->read(kReadAtOnce).toStdString());
        while (!framer_.overlong() && framer_.takeLine(line)) {
            Comrecord request = EmptyComrecord;
            decodeLine(line, key_, request);
            const std::optional<Reply> reply = handler_(request, session_);
            if (reply && reply->deliver)
                reply->deliver(*socket_, reply->record, key_);
            else if (reply)
                send(QByteArray::fromStdString(encodeLine(reply->record, key_, randomStart())));
        }
        if (framer_.overlong() || socket_->bytesToWrite() > kMaxUnsent) {
            close();
            return;
        }
    }
}

} // namespace tollwick::simulator
