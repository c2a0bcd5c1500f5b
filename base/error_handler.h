// The central error handler: turns the number of a run-time error into words for the user and the
// logs.
#pragma once

#include "base/log_writer.h"
#include "base/number_types.h"
#include "base/prompter.h"
#include "base/run_time_error.h"

#include <string_view>

namespace tollwick {

// The title of every message box.
inline constexpr std::string_view kProgramName = "Corvale Tollwick admin V1.3";

// Routines that run inside a guard, by the number that identifies them in the logs. A number, once
// given, stays, and some are given that nothing uses yet.
enum class Routine : Integer {
    FolderCheck = 60,
    Main = 61,
    LoadConnectionSettings = 62,
    SaveConnectionSettings = 63,
    LoadMainForm = 64,
    Exit = 65,
    RestorePlacement = 66,
    BuildTree = 67,
    FillList = 68,
    MenuTimer = 69,
    Command = 70,
    Login = 71,
    Request = 72,
    Help = 73,
    About = 74,
    ChangeLogin = 75,
    EditSetting = 76,
    BrowseScripts = 77,
    ChooseModem = 78,
    LoadScript = 79,
    SaveHost = 80,
    EditSchedule = 101,
    AddSchedule = 102,
    DeleteSchedule = 103,
    DeleteHost = 104,
    DeleteMail = 105,
};

class ErrorHandler {
public:
    ErrorHandler(Prompter& prompter, LogWriter& log) : prompter_(prompter), log_(log) {}

    // Shows a box for the grave errors and logs every one. `step` is the step that the routine had
    // reached.
    void operator()(Long error_number, Routine routine, Integer step);

    // Runs `body(step)`, which raises `step` as it goes. What escapes from it is reported and ends
    // the routine; nothing propagates. True when the body ran to its end.
    template <class Body>
    bool guard(Routine routine, Body&& body) {
        Integer step = 0;
        try {
            body(step);
            return true;
        } catch (...) {
            (*this)(currentErrorNumber(), routine, step);
            return false;
        }
    }

private:
    Prompter& prompter_;
    LogWriter& log_;
};

} // namespace tollwick
