// The lines of a service, prepared once, and both ends of a connection with nothing but the socket:
// a service that answers each line with the next one, and a client that sends lines and takes the
// replies.
#pragma once

#include "bench/figures.h"
#include "simulator/sample_site.h"
#include "wire/link_receiver.h"
#include "wire/record_packing.h"

#include <arpa/inet.h>
#include <atomic>
#include <mutex>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace tollwick::bench {

inline constexpr std::string_view kSessionKey = "0123456789abcdefghijklmnopqrstuv";
using Lines = std::vector<std::string>;

// A reply without a record, and one with it.
inline std::string line(Integer result, Long number = 0) {
    return encodeLine({.Operation = result, .RecordNumber = number}, kSessionKey, 0x5A);
}
template <class Record>
std::string lineOf(const Record& record, Long number = 0) {
    Comrecord reply{.Operation = result::Done, .RecordNumber = number};
    packRecord(record, reply);
    return encodeLine(reply, kSessionKey, 0x5A);
}
// A list, with the line that ends it.
template <class MakeRecord>
Lines listLines(int count, MakeRecord makeRecord) {
    Lines lines;
    for (int number = 1; number <= count; ++number)
        lines.push_back(lineOf(makeRecord(number), number));
    lines.push_back(line(result::EndOfList));
    return lines;
}
template <class Record>
Lines numberedLines(int count, Record record) {
    return listLines(count, [&](Long number) { return record.record_number = number, record; });
}
inline NameListRecord sampleName(int number) {
    return {VarText("Standard Modem " + std::to_string(number))};
}
inline OutboxRecord sampleMail(int number) {
    // Spread, so that sorting has something to do.
    const unsigned spread = static_cast<unsigned>(number) * 2654435761U;
    const std::string node = "node" + std::to_string(spread / 7 % 50);
    return {VarText("user" + std::to_string(spread % 99991) + '@' + node + ".corvale.example"),
            VarText(node), VarText("D.corv" + std::to_string(spread)), VarText(),
            static_cast<Long>(spread % 5000)};
}
// All of a login: the verdict, the settings and three lists.
inline Lines loginLines(int schedules, int hosts, int mails) {
    const Site site = simulator::sampleSite();
    Lines lines{line(result::Done, -1), lineOf(site.settings)};
    for (const Lines& more :
         {numberedLines(schedules, site.schedules.front()),
          numberedLines(hosts, site.hosts.front()), listLines(mails, sampleMail)})
        lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

inline bool sendAll(int socket, std::string_view bytes) {
    return ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(bytes.size());
}
// Takes what ends so into the buffer; empty when the connection ends.
inline std::string_view take(int socket, std::string& buffer, std::string_view end) {
    buffer.resize(2 * kMaxLineSize);
    std::size_t size = 0;
    do {
        const ssize_t got = ::recv(socket, buffer.data() + size, buffer.size() - size, 0);
        if (got <= 0)
            return {};
        size += static_cast<std::size_t>(got);
    } while (!std::string_view(buffer.data(), size).ends_with(end));
    return {buffer.data(), size};
}

// Serves one connection at a time on a thread of its own.
class FastPeer {
public:
    FastPeer() {
        socklen_t size = sizeof address_;
        require(::bind(listener_, address(), size) == 0 && ::listen(listener_, 4) == 0 &&
                    ::getsockname(listener_, address(), &size) == 0,
                "the peer cannot listen");
        thread_ = std::thread([this] {
            while ((connection_ = ::accept(listener_, nullptr, nullptr)) >= 0)
                serve();
        });
    }
    ~FastPeer() {
        ::shutdown(listener_, SHUT_RDWR);
        ::shutdown(connection_, SHUT_RDWR);
        thread_.join();
        ::close(listener_);
    }

    [[nodiscard]] sockaddr* address() { return reinterpret_cast<sockaddr*>(&address_); }
    [[nodiscard]] int port() const { return ntohs(address_.sin_port); }
    // From now on the requests are answered by these lines in turn, on each new connection from the
    // first; past the last one there is no answer.
    void answer(Lines replies) {
        const std::scoped_lock lock(mutex_);
        replies_ = std::move(replies);
        requests_.clear();
    }
    [[nodiscard]] Lines requests() { // since answer() or the start of the connection
        const std::scoped_lock lock(mutex_);
        return requests_;
    }

private:
    void serve() {
        answer(std::move(replies_));
        sendAll(connection_, kSessionKey);
        std::string buffer;
        for (std::string_view got; !(got = take(connection_, buffer, kLineEnd)).empty();) {
            const std::scoped_lock lock(mutex_); // free while requests are on their way
            requests_.emplace_back(got);
            if (requests_.size() <= replies_.size())
                sendAll(connection_, replies_[requests_.size() - 1]);
        }
        ::close(connection_);
    }

    sockaddr_in address_{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    int listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    std::atomic<int> connection_ = -1;
    std::mutex mutex_;
    Lines replies_, requests_;
    std::thread thread_;
};

// Connects, sends each line and takes the reply to it before the next. The milliseconds after
// connecting.
inline double exchange(FastPeer& peer, const Lines& requests) {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    std::string buffer;
    bool is_up = ::connect(socket, peer.address(), sizeof(sockaddr_in)) == 0 &&
                 !take(socket, buffer, kSessionKey).empty();
    const auto start = Clock::now();
    for (const std::string& request : requests)
        is_up = is_up && sendAll(socket, request) && !take(socket, buffer, kLineEnd).empty();
    const double time = milliseconds(start);
    ::close(socket);
    require(is_up, "the bare exchange fails");
    return time;
}

} // namespace tollwick::bench
