// What steers the service, whichever front end does: passed to every routine that sends requests.
#pragma once

#include "link/requests.h"

#include <string_view>

namespace tollwick {

struct ServiceContext {
    const StringTable& texts;
    Prompter& prompter;
    Progress& progress;
    ServiceLink& link;
    ServiceData& data;
    Requests& requests;

    // UTF-8, in the console's language.
    [[nodiscard]] std::string_view text(Text text) const { return texts(text); }
    // Has the status bar say that nothing is going on.
    void showIdle() const {
        progress.setInfo(text(link.isOpen() ? Text::Ready : Text::StatusConnectionClosed));
    }
};

} // namespace tollwick
