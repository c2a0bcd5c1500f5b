// How the one-field dialogs ended. Kept outside of them, since a dialog is gone when it has closed.
#pragma once

#include <string>

namespace tollwick {

struct EditOutcome {
    bool EditCancelled = true;
    // UTF-8. Untouched by a cancel: callers test EditCancelled first.
    std::string EditResult;
};

} // namespace tollwick
