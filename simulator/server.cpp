#include "simulator/server.h"

#include <QTcpSocket>

#include <utility>

namespace tollwick::simulator {
namespace {

constexpr int kTransportTick = 200; // milliseconds
constexpr std::size_t kMaxRequestsKept = 20'000;

} // namespace

Server::Server(Site site, Transport::Clock clock, QObject* parent)
    : QObject(parent), site_(std::move(site)), transport_(site_, std::move(clock)),
      responder_(site_, transport_, [this] { emit siteChanged(); }) {
    transport_timer_.setInterval(kTransportTick);
    connect(&transport_timer_, &QTimer::timeout, this, &Server::keepTime);
    connect(&listener_, &QTcpServer::newConnection, this, &Server::accept);
}

Server::~Server() {
    // Before the members that they make use of.
    qDeleteAll(findChildren<ConsoleConnection*>());
}

bool Server::listen(const QHostAddress& address, quint16 port) {
    return listener_.listen(address, port);
}

int Server::connectionCount() const {
    return static_cast<int>(findChildren<ConsoleConnection*>().size());
}

void Server::closeConnections() {
    for (ConsoleConnection* connection : findChildren<ConsoleConnection*>())
        connection->close();
}

void Server::accept() {
    while (QTcpSocket* socket = listener_.nextPendingConnection()) {
        auto* connection = new ConsoleConnection(
            socket,
            [this](const Comrecord& request, Session& session) { return handle(request, session); },
            this);
        connect(connection, &ConsoleConnection::closed, connection, &QObject::deleteLater);
        if (!faults_.send_no_key)
            connection->sendKey();
    }
}

std::optional<Reply> Server::handle(const Comrecord& request, Session& session) {
    if (requests_.size() >= kMaxRequestsKept)
        requests_.erase(requests_.begin(), requests_.begin() + kMaxRequestsKept / 2);
    requests_.push_back({request.Operation, request.ObjectClass, request.RecordNumber});
    last_request_ = request;
    emit requestReceived();

    const bool faulty = faults_.concern(request);
    Reply reply{EmptyComrecord, {}};
    if (faulty && faults_.result)
        reply.record.Operation = *faults_.result;
    else
        reply.record = responder_.reply(request, session);
    if (transport_.isActive() && !transport_timer_.isActive())
        transport_timer_.start();
    if (faulty && faults_.never_reply)
        return {};
    if (faulty)
        reply.deliver = std::exchange(faults_.deliver, nullptr);
    return reply;
}

void Server::keepTime() {
    if (transport_.advance())
        emit siteChanged();
    if (!transport_.isActive())
        transport_timer_.stop();
}

} // namespace tollwick::simulator
