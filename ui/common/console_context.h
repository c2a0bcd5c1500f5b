// What the windows of the console work on, passed to each of them.
#pragma once

#include "base/error_handler.h"
#include "base/main_module.h"
#include "base/progress.h"
#include "base/prompter.h"
#include "link/requests.h"
#include "link/service_link.h"
#include "rules/service_data.h"
#include "ui/common/edit_outcome.h"
#include "ui/common/to_qstring.h"
#include "ui/help/help_desk.h"

#include <string_view>

namespace tollwick {

struct ConsoleContext {
    MainModule& main;
    ErrorHandler& errors;
    Prompter& prompter;
    Progress& progress;
    ServiceLink& link;
    ServiceData& data;
    Requests& requests;
    HelpDesk& help;
    EditOutcome edit; // of the dialog that was up last

    [[nodiscard]] std::string_view text(Text text) const { return main.texts()(text); }
    [[nodiscard]] QString caption(Text text) const { return toQString(main.texts()(text)); }
    // Runs what a control asks for, unless a request waits: an assistive tool reaches a control
    // even while no window takes input.
    template <class Body>
    void guardControl(Routine routine, Body&& body) const {
        if (!requests.isRunning())
            errors.guard(routine, [&](Integer&) { body(); });
    }
    // The same for what takes an entered number. One that does not fit is told here, since the
    // error handler merely logs it.
    template <class Body>
    void guardEntry(Routine routine, Body&& body) const {
        guardControl(routine, [&] {
            try {
                body();
            } catch (const RunTimeError& error) {
                if (error.number() == error_number::Overflow)
                    prompter.exclamation(text(Text::NumberTooLarge));
                throw;
            }
        });
    }
    // Has the status bar say that nothing is going on.
    void showIdle() const {
        progress.setInfo(text(link.isOpen() ? Text::Ready : Text::StatusConnectionClosed));
    }
};

} // namespace tollwick
