// A service on the loopback interface that does what the test wrote down for it, while the test
// lets events happen, and keeps the requests that it got.
#pragma once

#include "wire/link_receiver.h"
#include "wire/record_packing.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace tollwick {

class ScriptedPeer {
public:
    static constexpr std::string_view kKey = "k3y.of-the+peer!0123456789ABCDEF";

    // One thing that the peer does; false: not yet.
    using Act = std::function<bool(ScriptedPeer&, QTcpSocket&)>;
    using Acts = std::vector<Act>;

    // Connections beyond those given go like the last of them. On each come first its greeting
    // and then one entry per request; a request without one is met with silence.
    explicit ScriptedPeer(std::vector<std::vector<Acts>> connections);
    // All connections greet with the key and go on with these.
    explicit ScriptedPeer(std::vector<Acts> answers);

    // Lets an act script::await go on.
    void release();
    bool takeRelease() { return releases_ > 0 && releases_-- > 0; }

    // Answers what has arrived at once: a wait lets events happen only now and then.
    void answerAtOnce() const;

    [[nodiscard]] int port() const { return server_.serverPort(); }
    // Connections so far, and those of them that have ended, whoever ended them.
    [[nodiscard]] std::size_t connections() const { return connections_.size(); }
    [[nodiscard]] std::size_t ended() const { return ended_; }
    // The requests of all connections, each as describe() has it.
    [[nodiscard]] const std::vector<std::string>& requests() const { return requests_; }

private:
    struct Connection {
        QTcpSocket* socket;
        const std::vector<Acts>& script;
        std::size_t next = 0;
        std::deque<Act> due = {};
        LineFramer framer = {};
    };
    void accept();
    void read(Connection& connection);
    void act(Connection& connection);
    void goOn(Connection& connection);

    std::vector<std::vector<Acts>> script_;
    std::deque<Connection> connections_;
    std::vector<std::string> requests_;
    std::size_t ended_ = 0;
    int releases_ = 0;
    QTcpServer server_; // the last: its end ends the connections
};

// "50/30 number 1 length 0", and " data " with hex digits when there are any.
std::string describe(const Comrecord& record);

// What a script is made of.
namespace script {
using Acts = ScriptedPeer::Acts;

ScriptedPeer::Act send(std::string_view bytes);
bool await(ScriptedPeer& peer, QTcpSocket& socket); // until the test says release()
bool close(ScriptedPeer& peer, QTcpSocket& socket);
bool endSending(ScriptedPeer& peer, QTcpSocket& socket); // goes on reading
inline const Acts kGreeting = {send(ScriptedPeer::kKey)};

inline Comrecord record(int result, Long number = 0) {
    return {static_cast<Integer>(result), 0, number, 0, {}};
}
template <class Record>
Comrecord recordWith(const Record& content, Long number = 0) {
    Comrecord reply = record(result::Done, number);
    packRecord(content, reply);
    return reply;
}
// The line of a reply, CR LF included.
std::string line(const Comrecord& reply);

inline Acts answer(const Comrecord& reply) {
    return {send(line(reply))};
}
inline Acts answer(int result, Long number = 0) {
    return answer(record(result, number));
}
} // namespace script

} // namespace tollwick
