// Logging in, from the connection settings to the data of the service; needs no window.
#pragma once

#include "base/connection_settings.h"
#include "link/service_context.h"

namespace tollwick {

enum class LoginOutcome {
    GivenUp,      // by the user, who is told nothing more
    NotConnected, // no connection
    NoKey,        // connections, but no session key on any of them
    LinkFailed,   // no reply to the authentication
    Rejected,     // wrong user name or password
    LoggedIn,     // everything is fetched, or the fetching failed and closed the link again
};

// What follows a login that was accepted.
enum class LoginFetch { Everything, Nothing };

class LoginSequence {
public:
    // Times that a connection without a session key is made anew.
    static constexpr int kReconnects = 3;
    static constexpr double kKeyTimeout = 10;    // seconds, whatever ComTimeout says
    static constexpr double kReconnectPause = 1; // seconds

    LoginSequence(ServiceContext& context, const ConnectionSettings& connection)
        : context_(context), link_(context.link), connection_(connection) {}

    // Logs in with these connection settings and the credentials of the context's data. Every
    // outcome but GivenUp and LoggedIn has been told to the user.
    LoginOutcome run(LoginFetch fetch = LoginFetch::Everything);

private:
    bool connect();
    void tellNotConnected();
    // Waits for the session key.
    bool hasKey();
    void pause(double seconds);
    // The error in the console's language, where that has words for it.
    [[nodiscard]] std::string describe(long error_number) const;
    ServiceContext& context_;
    ServiceLink& link_;
    const ConnectionSettings& connection_;
};

} // namespace tollwick
