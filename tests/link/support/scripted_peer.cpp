#include "tests/link/support/scripted_peer.h"

#include "link/link_receiver.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace tollwick {
namespace {

bool sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace

ScriptedPeer::ScriptedPeer(std::vector<Acts> answers)
    : ScriptedPeer(std::vector<Connection>{{.answers = std::move(answers)}}) {}

ScriptedPeer::ScriptedPeer(std::vector<Connection> script) : script_(std::move(script)) {
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    const bool listens = ::bind(listener_, any, size) == 0 && ::listen(listener_, 8) == 0 &&
                         ::getsockname(listener_, any, &size) == 0 && ::pipe(stop_) == 0;
    if (!listens) {
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
    ::close(stop_[1]);
    if (thread_.joinable())
        thread_.join();
    ::close(stop_[0]);
    ::close(listener_);
}

void ScriptedPeer::release() {
    const std::lock_guard lock(mutex_);
    ++releases_;
    wake_.notify_one();
}

std::size_t ScriptedPeer::connections() const {
    const std::lock_guard lock(mutex_);
    return connections_;
}

std::size_t ScriptedPeer::ended() const {
    const std::lock_guard lock(mutex_);
    return ended_;
}

std::vector<std::string> ScriptedPeer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void ScriptedPeer::run() {
    for (std::size_t index = 0; waitReadable(listener_); ++index) {
        const int socket = ::accept(listener_, nullptr, nullptr);
        const int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        {
            const std::lock_guard lock(mutex_);
            ++connections_;
        }
        serve(socket, script_[std::min(index, script_.size() - 1)]);
        ::close(socket);
        const std::lock_guard lock(mutex_);
        ++ended_;
    }
}

void ScriptedPeer::serve(int socket, const Connection& script) {
    if (!perform(socket, script.greeting))
        return;
    LineFramer framer;
    char buffer[16 * 1024];
    std::string text;
    for (std::size_t next = 0; waitReadable(socket);) {
        const ssize_t count = ::recv(socket, buffer, sizeof buffer, 0);
        if (count <= 0)
            return;
        framer.append({buffer, static_cast<std::size_t>(count)});
        while (framer.takeLine(text)) {
            Comrecord request;
            decodeLine(text, kKey, request);
            {
                const std::lock_guard lock(mutex_);
                requests_.push_back(describe(request));
            }
            if (next < script.answers.size() && !perform(socket, script.answers[next++]))
                return;
        }
    }
}

bool ScriptedPeer::perform(int socket, const Acts& acts) {
    for (const Act& act : acts) {
        switch (act.kind) {
        case Act::Kind::Send:
            if (!sendAll(socket, act.bytes))
                return false;
            break;
        case Act::Kind::SendSingly:
            for (const char byte : act.bytes) {
                if (!sendAll(socket, {&byte, 1}))
                    return false;
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            break;
        case Act::Kind::Pause:
            waitReadable(-1, act.milliseconds);
            break;
        case Act::Kind::Await: {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return releases_ > 0 || stopping_; });
            if (stopping_)
                return false;
            --releases_;
            break;
        }
        case Act::Kind::Close:
            return false;
        case Act::Kind::Reset: {
            const linger at_once{1, 0};
            ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
            return false;
        }
        case Act::Kind::EndSending:
            ::shutdown(socket, SHUT_WR);
            break;
        }
    }
    return true;
}

bool ScriptedPeer::waitReadable(int descriptor, int milliseconds) const {
    pollfd watched[] = {{stop_[0], POLLIN, 0}, {descriptor, POLLIN, 0}};
    return ::poll(watched, 2, milliseconds) > 0 && watched[0].revents == 0;
}

std::string describe(const Comrecord& record) {
    const std::string header =
        std::to_string(record.Operation) + "/" + std::to_string(record.ObjectClass) + " number " +
        std::to_string(record.RecordNumber) + " length " + std::to_string(record.RecordLength);
    const std::string data =
        toHex(withoutTrailingBlanks({record.ComrecordData.data(), record.ComrecordData.size()}));
    return data.empty() ? header : header + " data " + data;
}

std::string script::line(const Comrecord& reply) {
    return encodeLine(reply, ScriptedPeer::kKey, 77);
}

} // namespace tollwick
