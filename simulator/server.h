// The stand-in service on the network: serves one site to any number of consoles at once.
#pragma once

#include "simulator/console_connection.h"
#include "simulator/responder.h"
#include "simulator/transport.h"
#include "site/site.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTimer>

#include <optional>
#include <vector>

namespace tollwick::simulator {

// Misbehaviour that can be switched on at any time, to see what a console makes of it.
struct Faults {
    bool send_no_key = false;        // new connections get nothing
    bool never_reply = false;        // requests are carried out, but not answered
    std::optional<Integer> result{}; // in place of carrying a request out
    Delivery deliver{};              // in place of sending the next reply as one line; only once
    // Restrict the last three to requests for this class of object, and with this operation.
    std::optional<ObjectClass> only_class{};
    std::optional<Operation> only_operation{};

    [[nodiscard]] bool concern(const Comrecord& request) const {
        return (!only_class || static_cast<Integer>(*only_class) == request.ObjectClass) &&
               (!only_operation || static_cast<Integer>(*only_operation) == request.Operation);
    }
};

struct Request {
    Integer operation{};
    Integer object_class{};
    Long record_number{};

    bool operator==(const Request&) const = default;
};

class Server : public QObject {
    Q_OBJECT

public:
    explicit Server(Site site, Transport::Clock clock = Transport::steadyClock,
                    QObject* parent = nullptr);
    ~Server() override;

    // Port 0 takes a free one. False when the port cannot be opened; errorString() says why.
    bool listen(const QHostAddress& address = QHostAddress::LocalHost, quint16 port = 0);
    [[nodiscard]] quint16 port() const { return listener_.serverPort(); }
    [[nodiscard]] QString errorString() const { return listener_.errorString(); }

    // Changes made here are not told with siteChanged().
    [[nodiscard]] Site& site() { return site_; }
    [[nodiscard]] Transport& transport() { return transport_; }
    [[nodiscard]] Faults& faults() { return faults_; }

    // The latest requests that came in, refused ones included, oldest first.
    [[nodiscard]] const std::vector<Request>& requests() const { return requests_; }
    [[nodiscard]] const Comrecord& lastRequest() const { return last_request_; }
    void forgetRequests() { requests_.clear(); }

    [[nodiscard]] int connectionCount() const;
    void closeConnections();

signals:
    // A request has come in; it is the last of requests() and has not been answered yet.
    void requestReceived();
    // The site differs from what it was.
    void siteChanged();

private:
    void accept();
    // The reply to send, if any.
    std::optional<Reply> handle(const Comrecord& request, Session& session);
    void keepTime();

    Site site_;
    Transport transport_;
    Responder responder_;
    Faults faults_;
    std::vector<Request> requests_;
    Comrecord last_request_;
    QTimer transport_timer_; // runs while a transfer does
    QTcpServer listener_;
};

} // namespace tollwick::simulator
