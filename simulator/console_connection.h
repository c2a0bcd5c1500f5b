// One console that is connected: its socket, its key and its session.
#pragma once

#include "simulator/responder.h"
#include "wire/link_receiver.h"

#include <QObject>

#include <functional>
#include <optional>

class QTcpSocket;

namespace tollwick::simulator {

// Sends a reply, or what comes in its place: the socket, the reply, and the session key with which
// a line is made of it.
using Delivery = std::function<void(QTcpSocket&, const Comrecord& reply, const std::string& key)>;

struct Reply {
    Comrecord record;
    Delivery deliver; // without it the reply is sent as one line
};

class ConsoleConnection : public QObject {
    Q_OBJECT

public:
    // Answers one request, or leaves it unanswered.
    using Handler = std::function<std::optional<Reply>(const Comrecord&, Session&)>;

    // Takes the socket over.
    ConsoleConnection(QTcpSocket* socket, Handler handler, QObject* parent);

    // Sends the session key, with which every line is scrambled from then on.
    void sendKey();
    // Closes at once; what has not been sent yet is lost.
    void close();

signals:
    void closed();

private:
    void readLines();
    void send(const QByteArray& bytes);

    QTcpSocket* socket_;
    Handler handler_;
    std::string key_;
    LineFramer framer_;
    Session session_;
};

} // namespace tollwick::simulator
