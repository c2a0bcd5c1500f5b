#include "tests/link/support/scripted_peer.h"

#include "link/link_receiver.h"
#include "tests/link/support/sockets.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <utility>

namespace tollwick {
namespace {

constexpr int kStopCheck = 10; // milliseconds between two looks at `stopping_`

std::vector<ScriptedPeer::Acts> greeted(std::vector<ScriptedPeer::Acts> answers) {
    answers.insert(answers.begin(), script::kGreeting);
    return answers;
}

} // namespace

ScriptedPeer::ScriptedPeer(std::vector<Acts> answers)
    : ScriptedPeer(std::vector<std::vector<Acts>>(1, greeted(std::move(answers)))) {}

ScriptedPeer::ScriptedPeer(std::vector<std::vector<Acts>> connections)
    : script_(std::move(connections)) {
    listener_ = sockets::open();
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener_, any, size) != 0 || ::listen(listener_, 8) != 0 ||
        ::getsockname(listener_, any, &size) != 0) {
        ADD_FAILURE() << "The peer cannot listen";
        return;
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread(&ScriptedPeer::run, this);
}

ScriptedPeer::~ScriptedPeer() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable())
        thread_.join();
    sockets::close(listener_);
}

void ScriptedPeer::release() {
    const std::lock_guard lock(mutex_);
    ++releases_;
    wake_.notify_one();
}

bool ScriptedPeer::awaitRelease() {
    std::unique_lock lock(mutex_);
    wake_.wait(lock, [this] { return releases_ > 0 || stopping_; });
    return !stopping_ && releases_-- > 0;
}

void ScriptedPeer::run() {
    for (std::size_t index = 0; waitReadable(listener_); ++index) {
        const int socket = sockets::accept(listener_);
        sockets::setOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
        {
            const std::lock_guard lock(mutex_);
            ++connections_;
        }
        serve(socket, script_[std::min(index, script_.size() - 1)]);
        sockets::close(socket);
        const std::lock_guard lock(mutex_);
        ++ended_;
    }
}

void ScriptedPeer::serve(int socket, const std::vector<Acts>& script) {
    std::size_t next = 0;
    const auto goesOn = [&] {
        if (next < script.size())
            for (const Act& act : script[next++])
                if (!act(*this, socket))
                    return false;
        return true;
    };
    LineFramer framer;
    char buffer[16 * 1024];
    std::string text;
    for (bool open = goesOn(); open && waitReadable(socket);) {
        const auto count = ::recv(socket, buffer, sizeof buffer, 0);
        if (count <= 0)
            return;
        framer.append({buffer, static_cast<std::size_t>(count)});
        while (open && framer.takeLine(text)) {
            Comrecord request;
            decodeLine(text, kKey, request);
            {
                const std::lock_guard lock(mutex_);
                requests_.push_back(describe(request));
            }
            open = goesOn();
        }
    }
}

bool ScriptedPeer::waitReadable(int socket) const {
    sockets::Polled watched{};
    watched.fd = static_cast<decltype(watched.fd)>(socket);
    watched.events = POLLIN;
    for (;;) {
        {
            const std::lock_guard lock(mutex_);
            if (stopping_)
                return false;
        }
        if (const int ready = sockets::poll(&watched, kStopCheck); ready != 0)
            return ready > 0;
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
    return [bytes = std::string(bytes)](ScriptedPeer&, int socket) {
        const auto size = static_cast<int>(bytes.size());
        return ::send(socket, bytes.data(), size, sockets::kNoSignal) == size;
    };
}
bool await(ScriptedPeer& peer, int) {
    return peer.awaitRelease();
}
bool close(ScriptedPeer&, int) {
    return false;
}
bool reset(ScriptedPeer&, int socket) {
    const linger at_once{1, 0};
    sockets::setOption(socket, SOL_SOCKET, SO_LINGER, at_once);
    return false;
}
bool endSending(ScriptedPeer&, int socket) {
    return ::shutdown(socket, sockets::kSending) == 0;
}
std::string line(const Comrecord& reply) {
    return encodeLine(reply, ScriptedPeer::kKey, 77);
}

} // namespace script
} // namespace tollwick
