// What the windows of the console work on, passed to each of them.
#pragma once

#include "base/connection_settings.h"
#include "base/error_handler.h"
#include "link/service_context.h"
#include "ui/common/edit_outcome.h"
#include "ui/common/help_pages.h"
#include "ui/common/input_blocker.h"
#include "ui/common/to_qstring.h"

#include <string>

namespace tollwick {

struct ConsoleContext : ServiceContext {
    Settings& settings;
    ConnectionSettings& connection;
    const std::string& install_folder; // UTF-8
    ErrorHandler& errors;
    InputBlocker& input;
    HelpPages& help;
    EditOutcome edit; // of the dialog that was up last

    [[nodiscard]] QString caption(Text text) const { return toQString(texts(text)); }

    // Runs what a control asks for, unless a request waits: an assistive tool reaches a control
    // even while no window takes input.
    template <class Body>
    void guardControl(Routine routine, Body&& body) const {
        if (!requests.isRunning())
            errors.guard(routine, [&](Integer&) { body(); });
    }
    // A number that is too large has no box of its own; the error handler logs it.
    void tellOverflow() const {
        prompter.beep();
        progress.setInfo(text(Text::NumberTooLarge));
    }
};

} // namespace tollwick
