// Logging in, from the connection settings to the data of the service; needs no window.
#pragma once

#include "base/main_module.h"
#include "link/requests.h"

namespace tollwick {

enum class LoginOutcome {
    NotConnected, // no connection
    NoKey,        // connections, but no session key on any of them
    LinkFailed,   // no reply to the authentication
    Rejected,     // wrong user name or password
    LoggedIn,     // everything is fetched, or the fetching failed and closed the link again
};

class LoginSequence {
public:
    // Times that a connection without a session key is made anew.
    static constexpr int kReconnects = 3;
    static constexpr double kKeyTimeout = 10;    // seconds, whatever ComTimeout says
    static constexpr double kReconnectPause = 1; // seconds

    LoginSequence(ServiceLink& link, Requests& requests, ServiceData& data, MainModule& main,
                  Prompter& prompter, Progress& progress);

    // Logs in with the connection settings of `main` and the credentials of `data`. Every outcome
    // but LoggedIn has been told to the user.
    LoginOutcome run();

private:
    enum class KeyWait { Received, NoKey, TimedOut };
    KeyWait waitForKey();
    bool connect();
    void pause(double seconds);
    // The error in the console's language, where that has words for it.
    [[nodiscard]] std::string describe(long error_number) const;
    // Notes why the login failed; line breaks of the message become blanks.
    void log(std::string_view message, Integer step, std::string_view advice,
             long error_number = 0);

    ServiceLink& link_;
    Requests& requests_;
    ServiceData& data_;
    MainModule& main_;
    Prompter& prompter_;
    Progress& progress_;
};

} // namespace tollwick
