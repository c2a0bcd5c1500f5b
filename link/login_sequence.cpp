#include "link/login_sequence.h"

#include "base/numeric.h"

#include <QElapsedTimer>

namespace tollwick {
namespace {

bool hasPassed(const QElapsedTimer& timer, double seconds) {
    return static_cast<double>(timer.elapsed()) > seconds * 1000;
}

} // namespace

LoginOutcome LoginSequence::run(LoginFetch fetch) {
    link_.setComTimeout(connection_.ComTimeout);
    link_.reset();
    const LockedInput locked(link_.inputLock());
    for (int reconnects = 0;; ++reconnects) {
        const bool has_key = connect() && hasKey();
        if (has_key && !link_.hasGivenUp())
            break;
        if (link_.hasGivenUp()) {
            context_.progress.setInfo({});
            return LoginOutcome::GivenUp;
        }
        if (!link_.hasConnected()) {
            tellNotConnected();
            return LoginOutcome::NotConnected;
        }
        link_.Close();
        if (reconnects == kReconnects) {
            context_.progress.setInfo({});
            context_.prompter.beep();
            context_.prompter.exclamation(context_.text(Text::LinkNotInitialized));
            return LoginOutcome::NoKey;
        }
        pause(kReconnectPause);
        link_.Close(); // the pause lets events run
    }

    context_.progress.setInfo(context_.text(Text::StatusConnected));
    switch (context_.requests.txAuthenticate()) {
    case kAuthenticated:
        context_.data.forgetService();
        if (fetch == LoginFetch::Everything)
            context_.requests.RetrieveAll();
        return LoginOutcome::LoggedIn;
    case kAuthenticateFailed:
        return LoginOutcome::LinkFailed;
    default:
        context_.prompter.critical(context_.text(Text::AuthenticationFailure));
        return LoginOutcome::Rejected;
    }
}

bool LoginSequence::connect() {
    context_.progress.setInfo(context_.text(Text::StatusConnecting));
    link_.Connect(connection_.ServerConnectIp, numericValue(connection_.ServerConnectPort));
    link_.runUntil([this] { return !link_.isConnecting(); });
    return link_.hasConnected();
}

void LoginSequence::tellNotConnected() {
    std::string text;
    if (link_.hasFailed()) {
        text.append(context_.text(Text::ConnectFailedCause))
            .append(std::to_string(link_.lastErrorNumber()));
        text.append(") ").append(describe(link_.lastErrorNumber()));
    } else {
        text.append(context_.text(Text::ConnectFailedUnknown))
            .append(std::to_string(link_.stateNumber()));
        text.append(")");
    }
    context_.progress.setInfo({});
    link_.Close();
    context_.prompter.exclamation(text);
}

std::string LoginSequence::describe(long error_number) const {
    switch (error_number) {
    case socket_error::Refused:
        return std::string(context_.text(Text::ErrorRefused));
    case socket_error::HostNotFound:
        return std::string(context_.text(Text::ErrorNotFound));
    case socket_error::TimedOut:
        return std::string(context_.text(Text::ErrorTimedOut));
    case socket_error::Unreachable:
        return std::string(context_.text(Text::ErrorUnreachable));
    case socket_error::AddressNotAvailable:
        return std::string(context_.text(Text::ErrorAddress));
    default:
        return link_.lastErrorText();
    }
}

bool LoginSequence::hasKey() {
    QElapsedTimer timer;
    timer.start();
    link_.runUntil([&] {
        return link_.KeyReceived() != 0 || !link_.isOpen() || hasPassed(timer, kKeyTimeout);
    });
    return link_.KeyReceived() == kTrue;
}

void LoginSequence::pause(double seconds) {
    QElapsedTimer timer;
    timer.start();
    link_.runUntil([&] { return hasPassed(timer, seconds) || link_.hasGivenUp(); });
}

} // namespace tollwick
