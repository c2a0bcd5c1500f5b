#include "link/login_sequence.h"

#include "base/error_handler.h"
#include "base/numeric.h"

#include <QElapsedTimer>

namespace tollwick {
namespace {

// The steps of a login by which the logs tell them apart.
constexpr Integer kConnectStep = 3;
constexpr Integer kKeyStep = 5;
constexpr Integer kAuthenticateStep = 6;

bool hasPassed(const QElapsedTimer& timer, double seconds) {
    return static_cast<double>(timer.elapsed()) > seconds * 1000;
}

} // namespace

LoginOutcome LoginSequence::run() {
    link_.setComTimeout(connection_.ComTimeout);
    link_.reset();
    for (int reconnects = 0;; ++reconnects) {
        if (!connect())
            return LoginOutcome::NotConnected;
        if (hasKey())
            break;
        link_.Close();
        if (reconnects < kReconnects && !link_.hasGivenUp()) {
            pause(kReconnectPause);
            link_.Close(); // the pause lets events run
        }
        if (reconnects == kReconnects || link_.hasGivenUp()) {
            context_.progress.setInfo({});
            log(context_.text(Text::LinkNotInitialized), kKeyStep,
                "Check that the port is the one that the service listens at.");
            context_.prompter.beep();
            context_.prompter.exclamation(context_.text(Text::LinkNotInitialized));
            return LoginOutcome::NoKey;
        }
    }

    context_.progress.setInfo(context_.text(Text::StatusConnected));
    switch (context_.requests.txAuthenticate()) {
    case kAuthenticated:
        context_.data.forgetService();
        context_.requests.RetrieveAll();
        return LoginOutcome::LoggedIn;
    case kAuthenticateFailed:
        log(context_.text(Text::FailAuthenticate), kAuthenticateStep,
            "Check the network and the service.");
        return LoginOutcome::LinkFailed;
    default:
        log(context_.text(Text::AuthenticationFailure), kAuthenticateStep,
            "Check the user name and the password.");
        context_.prompter.critical(context_.text(Text::AuthenticationFailure));
        return LoginOutcome::Rejected;
    }
}

bool LoginSequence::connect() {
    context_.progress.setInfo(context_.text(Text::StatusConnecting));
    link_.Connect(connection_.ServerConnectIp, numericValue(connection_.ServerConnectPort));
    link_.runUntil([this] { return !link_.isConnecting(); });
    if (link_.hasConnected())
        return true;
    context_.progress.setInfo({});
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
    const long error = link_.hasFailed() ? link_.lastErrorNumber() : 0;
    link_.Close();
    log(text, kConnectStep, "Check the address, the port, and that the service runs.", error);
    context_.prompter.exclamation(text);
    return false;
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

void LoginSequence::log(std::string_view message, Integer step, std::string_view advice,
                        long error_number) {
    std::string line(message);
    for (std::size_t at = 0; (at = line.find("\r\n", at)) != std::string::npos;)
        line.replace(at, 2, " ");
    log_.LogWrite(line, advice, static_cast<Long>(error_number),
                  static_cast<Integer>(Routine::Login), step);
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
