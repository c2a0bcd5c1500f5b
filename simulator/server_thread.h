// A stand-in service on a thread of its own, for programs that also are its client.
#pragma once

#include "simulator/server.h"

#include <QThread>

#include <functional>
#include <memory>
#include <type_traits>

namespace tollwick::simulator {

class ServerThread {
public:
    // Listens on a free loopback port once constructed.
    explicit ServerThread(Site site, Transport::Clock clock = Transport::steadyClock);
    ~ServerThread();
    ServerThread(const ServerThread&) = delete;
    ServerThread& operator=(const ServerThread&) = delete;

    [[nodiscard]] quint16 port() const { return port_; }

    // Runs `work(server)` on the server's thread and returns what it returns.
    template <class Work>
    auto run(Work&& work) {
        using Result = std::invoke_result_t<Work, Server&>;
        if constexpr (std::is_void_v<Result>) {
            onThread([&] { work(*server_); });
        } else {
            Result result{};
            onThread([&] { result = work(*server_); });
            return result;
        }
    }

private:
    void onThread(const std::function<void()>& work);

    QThread thread_;
    std::unique_ptr<Server> server_; // lives on thread_
    QObject* context_ = nullptr;     // lives on thread_, too
    quint16 port_ = 0;
};

} // namespace tollwick::simulator
