#include "ctl/interrupt.h"

#include "ctl/exit_status.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace tollwick::ctl {
namespace {

constexpr int kLookEvery = 20; // milliseconds
constexpr int kLongestReply = 1000 / kLookEvery;

// Set by a signal handler, which may do little else.
std::atomic<bool> is_wanted{false};
static_assert(std::atomic<bool>::is_always_lock_free);

[[noreturn]] void end() {
    std::fflush(stdout);
    std::_Exit(static_cast<int>(ExitStatus::Interrupted));
}

} // namespace

void Interrupt::watch() {
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, [](int) { is_wanted = true; });
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(kLookEvery);
}

void Interrupt::unlockInput() {
    --waits_;
    if (is_wanted)
        end();
}

void Interrupt::look() {
    if (is_wanted && (waits_ == 0 || ++looks_ > kLongestReply))
        end();
}

} // namespace tollwick::ctl
