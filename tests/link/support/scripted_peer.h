// A service on the loopback interface, on a thread of its own, that does what the test wrote down
// for it and keeps the requests that it got.
#pragma once

#include "link/record_packing.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tollwick {

class ScriptedPeer {
public:
    static constexpr std::string_view kKey = "k3y.of-the+peer!0123456789ABCDEF";

    // One thing that the peer does; false when the connection is over.
    using Act = std::function<bool(ScriptedPeer&, int socket)>;
    using Acts = std::vector<Act>;

    // Connections beyond those given go like the last of them. On each come first its greeting
    // and then one entry per request; a request without one is met with silence.
    explicit ScriptedPeer(std::vector<std::vector<Acts>> connections);
    // All connections greet with the key and go on with these.
    explicit ScriptedPeer(std::vector<Acts> answers);
    ~ScriptedPeer();

    // Lets an act script::await go on.
    void release();
    bool awaitRelease();

    [[nodiscard]] int port() const { return port_; }
    // Connections so far, and those of them that have ended, whoever ended them.
    [[nodiscard]] std::size_t connections() const { return locked(connections_); }
    [[nodiscard]] std::size_t ended() const { return locked(ended_); }
    // The requests of all connections, each as describe() has it.
    [[nodiscard]] std::vector<std::string> requests() const { return locked(requests_); }

private:
    void run();
    void serve(int socket, const std::vector<Acts>& script);
    // False when the peer is to stop.
    [[nodiscard]] bool waitReadable(int socket) const;
    template <class Value>
    Value locked(const Value& value) const {
        const std::lock_guard lock(mutex_);
        return value;
    }

    std::vector<std::vector<Acts>> script_;
    int listener_ = -1;
    int port_ = 0;

    mutable std::mutex mutex_; // guards what follows
    std::condition_variable wake_;
    std::size_t releases_ = 0; // that nobody has awaited yet
    bool stopping_ = false;
    std::vector<std::string> requests_;
    std::size_t connections_ = 0;
    std::size_t ended_ = 0;

    std::thread thread_;
};

// "50/30 number 1 length 0", and " data " with hex digits when there are any.
std::string describe(const Comrecord& record);

// What a script is made of.
namespace script {
using Acts = ScriptedPeer::Acts;

ScriptedPeer::Act send(std::string_view bytes);
bool await(ScriptedPeer& peer, int socket); // until the test says release()
bool close(ScriptedPeer& peer, int socket);
bool reset(ScriptedPeer& peer, int socket);
bool endSending(ScriptedPeer& peer, int socket); // goes on reading
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
