// The one way in which the layers below the windows tell and ask the user something. The windows
// answer with message boxes, tests with expectations.
#pragma once

#include <string_view>

namespace tollwick {

enum class BoxIcon { None, Question, Exclamation, Critical };

enum class Answer { Yes, No };

class Prompter {
public:
    virtual ~Prompter() = default;

    // A box with this icon, the application title and one button. `text` is UTF-8 and may hold CR
    // LF.
    virtual void tell(BoxIcon icon, std::string_view text) = 0;
    // A box with Yes and No; closing it in any other way counts as No.
    virtual Answer ask(BoxIcon icon, std::string_view text, Answer default_button) = 0;
    virtual void beep() = 0;

    void exclamation(std::string_view text) { tell(BoxIcon::Exclamation, text); }
    void critical(std::string_view text) { tell(BoxIcon::Critical, text); }
};

} // namespace tollwick
