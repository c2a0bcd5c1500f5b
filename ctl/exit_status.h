// How the program ends, for scripts.
#pragma once

namespace tollwick::ctl {

enum class ExitStatus : int {
    Done = 0,           // of a comparison: equal
    Different = 1,      // a comparison found differences
    Usage = 2,          // wrong use, a value that a rule refuses, a file: nothing was changed
    NoConnection = 3,   // none came about, or it was lost
    LoginRefused = 4,   // by the service
    ServiceRefused = 5, // a request was refused or failed
    NotFound = 6,       // no such host, schedule, mail or script
    Interrupted = 130,  // by the user, as shells have it
};

} // namespace tollwick::ctl
