// Tells and asks the user with message boxes.
#pragma once

#include "base/error_handler.h"
#include "base/prompter.h"
#include "base/string_table.h"

class QWidget;

namespace tollwick {

class InputBlocker;

class MessageBoxPrompter : public Prompter {
public:
    // The boxes speak the language of `texts`.
    MessageBoxPrompter(const StringTable& texts, InputBlocker& blocker);

    void tell(BoxIcon icon, std::string_view text) override;
    Answer ask(BoxIcon icon, std::string_view text, Answer default_button) override;
    void beep() override;

private:
    const StringTable& texts_;
    InputBlocker& blocker_;
};

} // namespace tollwick
