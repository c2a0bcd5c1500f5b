// The running transfer of the mail in the outbox. It moves nothing: it is a clockwork that behaves
// as the UUCP daemon's would, driven by the time that has passed.
#pragma once

#include "site/site.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tollwick::simulator {

class Transport {
public:
    using Milliseconds = std::chrono::milliseconds;
    // Time since any fixed moment; never goes back.
    using Clock = std::function<Milliseconds()>;

    static Milliseconds steadyClock();

    Transport(Site& site, Clock clock) : site_(site), clock_(std::move(clock)) {}

    // Both commands count from the last advance().
    //
    // Calls each host that mail waits for, one after the other, unless a transfer runs already.
    // Mail for a host that is not activated stays.
    void start();
    // Ends a transfer that runs; the mail being sent stays in the outbox.
    void cancel();

    // Brings everything up to the present. True when a mail has left the outbox.
    bool advance();

    // True until everything is idle again, the moment included in which the end is still told.
    [[nodiscard]] bool isActive() const { return phase_ != Phase::Idle; }

    // What the monitor shows, as of the last advance() and the time passed since.
    [[nodiscard]] UucpStatusRecord status() const;

private:
    enum class Phase { Idle, Dialing, LoggingIn, Sending, Closing, Ended };

    void enter(Phase phase, Milliseconds at, Milliseconds length);
    void callNextHost(Milliseconds at);
    void sendNextMail(Milliseconds at);
    void end(const char* outcome, Milliseconds at);
    // Takes the mail that has been sent out of the outbox; false when it was gone already.
    bool removeSentMail();

    [[nodiscard]] const OutboxRecord* nextMail(const VarText* node) const;
    [[nodiscard]] bool isSendable(const OutboxRecord& mail) const;
    [[nodiscard]] std::string stateText() const;

    Site& site_;
    Clock clock_;

    Phase phase_ = Phase::Idle;
    Milliseconds started_{};   // of the phase
    Milliseconds length_{};    // of the phase
    const char* outcome_ = ""; // told while Ended
    VarText node_;             // that is being called
    bool is_modem_ = false;    // how it is being called
    double speed_ = 0;         // bits per second, of the mail being sent
    OutboxRecord mail_;        // that is being sent
    Long file_number_ = 0;     // of this transfer, from 1
};

} // namespace tollwick::simulator
