// One run of the program against one service: where it is, the login, and what every command needs.
#pragma once

#include "base/clock.h"
#include "base/connection_settings.h"
#include "ctl/command_line.h"
#include "ctl/interrupt.h"
#include "ctl/messages.h"
#include "ctl/output.h"
#include "link/service_context.h"

#include <optional>
#include <string>

namespace tollwick::ctl {

class Session {
public:
    Session(const StringTable& string_table, Messages& told, Settings& settings,
            const CommonOptions& common);

    // Has the password ready, from where the user has put it; to be called before anything else is
    // read from standard input. Done, or what ends the program.
    ExitStatus findPassword();
    // Finds the password, connects and logs in, and fetches nothing. What ends it has been told.
    ExitStatus logIn();

    // What a request that has failed, and has been told, ends the program with.
    [[nodiscard]] ExitStatus failure() const {
        return requests.wasAnswered() ? ExitStatus::ServiceRefused : ExitStatus::NoConnection;
    }
    // Done, or what ends the program after a request that gave this.
    [[nodiscard]] ExitStatus statusOf(Integer outcome) const {
        return hasFailed(outcome) ? failure() : ExitStatus::Done;
    }
    // The same for a request that is only done when it was answered so; tells it when it was not.
    ExitStatus statusOfChange(Integer outcome);

    // Tells why and gives the status of wrong use.
    ExitStatus refuse(Text text, std::initializer_list<std::string_view> values = {}) {
        messages.error(text, values);
        return ExitStatus::Usage;
    }
    ExitStatus serviceRefused(Text text) {
        messages.error(text);
        return ExitStatus::ServiceRefused;
    }
    ExitStatus notFound(Text text, std::string_view name) {
        messages.error(text, {name});
        return ExitStatus::NotFound;
    }

    const StringTable& texts;
    Messages& messages;
    ProgressLine progress;
    Output output;

private:
    ConnectionSettings connection_;
    std::optional<std::string> password_file_;
    std::optional<std::string> password_;
    SystemClock clock_;
    ServiceLink link_;
    ServiceData data_;
    Interrupt interrupt_;

public:
    Requests requests;
    ServiceContext context;
};

} // namespace tollwick::ctl
