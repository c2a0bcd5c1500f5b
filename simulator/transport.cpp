#include "simulator/transport.h"

#include <array>
#include <cmath>
#include <numbers>

namespace tollwick::simulator {
namespace {

using Milliseconds = Transport::Milliseconds;

constexpr Milliseconds kModemDial{2500};
constexpr Milliseconds kNetworkDial{600};
constexpr Milliseconds kLogIn{800};
constexpr Milliseconds kClose{500};
constexpr Milliseconds kTellEnd{3000};
constexpr Milliseconds kAtLeastPerMail{100};

// What a line carries at its best, by the host's kind of connection: modem, dial-up, network.
constexpr std::array kLineSpeeds{33'600.0, 57'600.0, 256'000.0};
constexpr double kBitsPerByte = 10; // with start and stop bit

constexpr Integer kByModem = 0;

std::size_t kindOf(const HostRecord* host) {
    if (host == nullptr || host->connect_using < 0 ||
        static_cast<std::size_t>(host->connect_using) >= kLineSpeeds.size())
        return kByModem;
    return static_cast<std::size_t>(host->connect_using);
}

// No two files go equally well: 90 to 99 hundredths of what the line carries.
double efficiency(Long file_number) {
    return 0.90 + 0.01 * ((file_number * 7) % 10);
}

// Bytes; a mail is told in kB of 1000 bytes.
double sizeOf(const OutboxRecord& mail) {
    return mail.size > 0 ? mail.size * 1000.0 : 500.0;
}

Long toLong(double value) {
    return value < std::numeric_limits<Long>::max() ? static_cast<Long>(value)
                                                    : std::numeric_limits<Long>::max();
}

// The part of a file that has gone after this part of its time, both 0 to 1. Always rises, but not
// evenly, so that the average speed varies a little.
double partSent(double part_of_time) {
    constexpr double kWaves = 3;
    constexpr double kDepth = 0.25;
    const double angle = 2 * std::numbers::pi * kWaves;
    return part_of_time + kDepth * std::sin(angle * part_of_time) / angle;
}

} // namespace

Milliseconds Transport::steadyClock() {
    return std::chrono::duration_cast<Milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void Transport::start() {
    if (phase_ != Phase::Idle && phase_ != Phase::Ended)
        return;
    file_number_ = 0;
    const Milliseconds now = clock_();
    if (nextMail(nullptr) == nullptr)
        end("No mail to send", now);
    else
        callNextHost(now);
}

void Transport::cancel() {
    if (phase_ != Phase::Idle && phase_ != Phase::Ended)
        end("Cancelled", clock_());
}

bool Transport::advance() {
    const Milliseconds now = clock_();
    bool outbox_changed = false;
    // Several phases may have passed; each starts where the one before it ended, not now.
    while (phase_ != Phase::Idle && now - started_ >= length_) {
        const Milliseconds at = started_ + length_;
        switch (phase_) {
        case Phase::Dialing:
            enter(Phase::LoggingIn, at, kLogIn);
            break;
        case Phase::LoggingIn:
            sendNextMail(at);
            break;
        case Phase::Sending:
            outbox_changed |= removeSentMail();
            sendNextMail(at);
            break;
        case Phase::Closing:
            if (nextMail(nullptr) == nullptr)
                end("Finished", at);
            else
                callNextHost(at);
            break;
        case Phase::Ended:
        case Phase::Idle:
            phase_ = Phase::Idle;
            break;
        }
    }
    return outbox_changed;
}

void Transport::enter(Phase phase, Milliseconds at, Milliseconds length) {
    phase_ = phase;
    started_ = at;
    length_ = length;
}

void Transport::callNextHost(Milliseconds at) {
    node_ = nextMail(nullptr)->node;
    is_modem_ = kindOf(site_.hostOfNode(node_)) == kByModem;
    enter(Phase::Dialing, at, is_modem_ ? kModemDial : kNetworkDial);
}

void Transport::sendNextMail(Milliseconds at) {
    const OutboxRecord* next = nextMail(&node_);
    if (next == nullptr) {
        enter(Phase::Closing, at, kClose);
        return;
    }
    mail_ = *next;
    ++file_number_;
    speed_ = kLineSpeeds[kindOf(site_.hostOfNode(node_))] * efficiency(file_number_);
    const double seconds = sizeOf(mail_) * kBitsPerByte / speed_;
    enter(Phase::Sending, at,
          std::max(kAtLeastPerMail, Milliseconds(static_cast<std::int64_t>(seconds * 1000))));
}

void Transport::end(const char* outcome, Milliseconds at) {
    outcome_ = outcome;
    enter(Phase::Ended, at, kTellEnd);
}

bool Transport::removeSentMail() {
    const auto sent = std::find(site_.outbox.begin(), site_.outbox.end(), mail_);
    if (sent == site_.outbox.end())
        return false;
    site_.outbox.erase(sent);
    return true;
}

const OutboxRecord* Transport::nextMail(const VarText* node) const {
    for (const OutboxRecord& mail : site_.outbox) {
        if ((node == nullptr || mail.node == *node) && isSendable(mail))
            return &mail;
    }
    return nullptr;
}

bool Transport::isSendable(const OutboxRecord& mail) const {
    const HostRecord* host = site_.hostOfNode(mail.node);
    return host == nullptr || host->active != kFalse;
}

std::string Transport::stateText() const {
    switch (phase_) {
    case Phase::Idle:
        return "Idle";
    case Phase::Dialing:
        return (is_modem_ ? "Dialing " : "Connecting to ") + node_.text();
    case Phase::LoggingIn:
        return "Logging in";
    case Phase::Sending:
        return "Sending";
    case Phase::Closing:
        return "Closing";
    case Phase::Ended:
        return outcome_;
    }
    return {};
}

UucpStatusRecord Transport::status() const {
    UucpStatusRecord status;
    status.queued_files = static_cast<Long>(site_.outbox.size());
    status.state = stateText();
    if (phase_ != Phase::Sending)
        return status;

    const double elapsed = static_cast<double>((clock_() - started_).count());
    const double part_of_time =
        std::clamp(elapsed / static_cast<double>(length_.count()), 0.0, 1.0);
    status.file_number = file_number_;
    status.file_name = mail_.file_name;
    status.file_size = toLong(sizeOf(mail_));
    status.percent = static_cast<Integer>(100 * partSent(part_of_time));
    if (part_of_time > 0)
        status.average_speed = toLong(speed_ * partSent(part_of_time) / part_of_time);
    return status;
}

} // namespace tollwick::simulator
