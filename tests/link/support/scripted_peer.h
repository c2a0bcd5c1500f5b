// A service on the loopback interface, on a thread of its own, that does what the test wrote down
// for it and keeps the requests that it got.
#pragma once

#include "link/record_packing.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tollwick {

class ScriptedPeer {
public:
    static constexpr std::string_view kKey = "k3y.of-the+peer!0123456789ABCDEF";
    static_assert(kKey.size() == 32);

    // One thing that the peer does.
    struct Act {
        enum class Kind {
            Send,       // in one piece
            SendSingly, // byte by byte, each on its own way
            Pause,
            Await, // until the test says release()
            Close,
            Reset,
            EndSending, // closes its own direction and goes on reading
        };
        Kind kind;
        std::string bytes = {};
        int milliseconds = 0;
    };
    using Acts = std::vector<Act>;

    // What happens on one connection; a request without an answer is met with silence.
    struct Connection {
        Acts greeting = {{Act::Kind::Send, std::string(kKey)}};
        std::vector<Acts> answers = {}; // one for each request
    };

    // Connections beyond those given go like the last of them.
    explicit ScriptedPeer(std::vector<Connection> script);
    explicit ScriptedPeer(std::vector<Acts> answers);
    ~ScriptedPeer();
    ScriptedPeer(const ScriptedPeer&) = delete;
    ScriptedPeer& operator=(const ScriptedPeer&) = delete;

    void release();

    [[nodiscard]] std::uint16_t port() const { return port_; }
    // Connections so far, and those of them that have ended, whoever ended them.
    [[nodiscard]] std::size_t connections() const;
    [[nodiscard]] std::size_t ended() const;
    // The requests of all connections, each as describe() has it.
    [[nodiscard]] std::vector<std::string> requests() const;

private:
    void run();
    void serve(int socket, const Connection& script);
    // False when the connection is over.
    bool perform(int socket, const Acts& acts);
    // False when the peer is to stop or the time has passed.
    bool waitReadable(int descriptor, int milliseconds = -1) const;

    std::vector<Connection> script_;
    int listener_ = -1;
    int stop_[2] = {-1, -1}; // closing the second end wakes the thread
    std::uint16_t port_ = 0;

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

inline ScriptedPeer::Act send(std::string_view bytes) {
    return {ScriptedPeer::Act::Kind::Send, std::string(bytes)};
}
inline ScriptedPeer::Act sendSingly(std::string_view bytes) {
    return {ScriptedPeer::Act::Kind::SendSingly, std::string(bytes)};
}
inline ScriptedPeer::Act pause(int milliseconds) {
    return {ScriptedPeer::Act::Kind::Pause, {}, milliseconds};
}
inline const ScriptedPeer::Act await{ScriptedPeer::Act::Kind::Await};
inline const ScriptedPeer::Act close{ScriptedPeer::Act::Kind::Close};
inline const ScriptedPeer::Act reset{ScriptedPeer::Act::Kind::Reset};
inline const ScriptedPeer::Act endSending{ScriptedPeer::Act::Kind::EndSending};

inline Comrecord record(int result, Long number = 0) {
    Comrecord reply = EmptyComrecord;
    reply.Operation = static_cast<Integer>(result);
    reply.RecordNumber = number;
    return reply;
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
