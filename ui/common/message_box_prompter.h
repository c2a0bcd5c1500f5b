// Tells and asks the user with message boxes.
#pragma once

#include "base/main_module.h"
#include "base/prompter.h"

class QWidget;

namespace tollwick {

class InputBlocker;

class MessageBoxPrompter : public Prompter {
public:
    // The boxes speak the language of `main`.
    MessageBoxPrompter(const MainModule& main, InputBlocker& blocker);

    void tell(BoxIcon icon, std::string_view text) override;
    Answer ask(BoxIcon icon, std::string_view text, Answer default_button) override;
    void beep() override;

private:
    const MainModule& main_;
    InputBlocker& blocker_;
};

} // namespace tollwick
