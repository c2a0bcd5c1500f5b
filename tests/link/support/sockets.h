// The sockets of the platform, as far as their calls differ.
#pragma once

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace tollwick::sockets {

#ifdef _WIN32
inline constexpr int kNoSignal = 0;
inline constexpr int kSending = SD_SEND;
using Polled = WSAPOLLFD;

inline int open() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    return static_cast<int>(::socket(AF_INET, SOCK_STREAM, 0));
}
inline int accept(int listener) {
    return static_cast<int>(::accept(static_cast<SOCKET>(listener), nullptr, nullptr));
}
inline int poll(Polled* watched, int milliseconds) {
    return WSAPoll(watched, 1, milliseconds);
}
inline void close(int socket) {
    ::closesocket(static_cast<SOCKET>(socket));
}
#else
inline constexpr int kNoSignal = MSG_NOSIGNAL;
inline constexpr int kSending = SHUT_WR;
using Polled = pollfd;

inline int open() {
    return ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}
inline int accept(int listener) {
    return ::accept(listener, nullptr, nullptr);
}
inline int poll(Polled* watched, int milliseconds) {
    return ::poll(watched, 1, milliseconds);
}
inline void close(int socket) {
    ::close(socket);
}
#endif

template <class Value>
void setOption(int socket, int level, int name, const Value& value) {
    ::setsockopt(socket, level, name, reinterpret_cast<const char*>(&value), sizeof value);
}

} // namespace tollwick::sockets
