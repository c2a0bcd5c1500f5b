#include "link/login_sequence.h"

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

LoginSequence::LoginSequence(ServiceLink& link, Requests& requests, ServiceData& data,
                             MainModule& main, Prompter& prompter, Progress& progress)
    : link_(link), requests_(requests), data_(data), main_(main), prompter_(prompter),
      progress_(progress) {}

LoginOutcome LoginSequence::run() {
    const StringTable& texts = main_.texts();
    link_.setComTimeout(main_.connection.ComTimeout);
    link_.reset();
    for (int reconnects = 0;; ++reconnects) {
        if (!connect())
            return LoginOutcome::NotConnected;
        if (waitForKey() == KeyWait::Received)
            break;
        link_.Close();
        if (reconnects < kReconnects && !link_.hasGivenUp()) {
            pause(kReconnectPause);
            link_.Close(); // the pause lets events run
        }
        if (reconnects == kReconnects || link_.hasGivenUp()) {
            progress_.setInfo({});
            log(texts(Text::LinkNotInitialized), kKeyStep,
                "Check that the port is the one that the service listens at.");
            prompter_.beep();
            prompter_.exclamation(texts(Text::LinkNotInitialized));
            return LoginOutcome::NoKey;
        }
    }

    progress_.setInfo(texts(Text::StatusConnected));
    switch (requests_.txAuthenticate()) {
    case kAuthenticated:
        // Nothing of an earlier session is left when the fetching stops halfway.
        data_.settings = SettingsRecord();
        data_.schedules.clear();
        data_.hosts.clear();
        data_.outbox.clear();
        data_.uucp_status = UucpStatusRecord();
        requests_.RetrieveAll();
        return LoginOutcome::LoggedIn;
    case kAuthenticateFailed:
        log(texts(Text::FailAuthenticate), kAuthenticateStep, "Check the network and the service.");
        return LoginOutcome::LinkFailed;
    default:
        log(texts(Text::AuthenticationFailure), kAuthenticateStep,
            "Check the user name and the password.");
        prompter_.critical(texts(Text::AuthenticationFailure));
        return LoginOutcome::Rejected;
    }
}

bool LoginSequence::connect() {
    const StringTable& texts = main_.texts();
    progress_.setInfo(texts(Text::StatusConnecting));
    link_.Connect(main_.connection.ServerConnectIp,
                  numericValue(main_.connection.ServerConnectPort));
    while (link_.isConnecting())
        link_.processEvents();
    if (link_.hasConnected())
        return true;
    progress_.setInfo({});
    std::string text;
    if (link_.hasFailed()) {
        text.append(texts(Text::ConnectFailedCause))
            .append(std::to_string(link_.lastErrorNumber()));
        text.append(") ").append(describe(link_.lastErrorNumber()));
    } else {
        text.append(texts(Text::ConnectFailedUnknown)).append(std::to_string(link_.stateNumber()));
        text.append(")");
    }
    const long error = link_.hasFailed() ? link_.lastErrorNumber() : 0;
    link_.Close();
    log(text, kConnectStep, "Check the address, the port, and that the service runs.", error);
    prompter_.exclamation(text);
    return false;
}

std::string LoginSequence::describe(long error_number) const {
    const StringTable& texts = main_.texts();
    switch (error_number) {
    case socket_error::Refused:
        return std::string(texts(Text::ErrorRefused));
    case socket_error::HostNotFound:
        return std::string(texts(Text::ErrorNotFound));
    case socket_error::TimedOut:
        return std::string(texts(Text::ErrorTimedOut));
    case socket_error::Unreachable:
        return std::string(texts(Text::ErrorUnreachable));
    case socket_error::AddressNotAvailable:
        return std::string(texts(Text::ErrorAddress));
    default:
        return link_.lastErrorText();
    }
}

void LoginSequence::log(std::string_view message, Integer step, std::string_view advice,
                        long error_number) {
    std::string line(message);
    for (std::size_t at = 0; (at = line.find("\r\n", at)) != std::string::npos;)
        line.replace(at, 2, " ");
    main_.log().LogWrite(line, advice, static_cast<Long>(error_number),
                         static_cast<Integer>(Routine::Login), step);
}

LoginSequence::KeyWait LoginSequence::waitForKey() {
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        if (link_.KeyReceived() == kTrue)
            return KeyWait::Received;
        if (link_.KeyReceived() == 1 || !link_.isOpen())
            return KeyWait::NoKey;
        if (hasPassed(timer, kKeyTimeout))
            return KeyWait::TimedOut;
        link_.processEvents();
    }
}

void LoginSequence::pause(double seconds) {
    QElapsedTimer timer;
    timer.start();
    while (!hasPassed(timer, seconds) && !link_.hasGivenUp())
        link_.processEvents();
}

} // namespace tollwick
