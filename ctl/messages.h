// What the program says on standard error, apart from its output.
#pragma once

#include "base/progress.h"
#include "base/prompter.h"
#include "base/string_table.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace tollwick::ctl {

// UTF-8 without control characters, which a terminal might obey; line breaks stay.
std::string printable(std::string_view text);

// The Prompter of a program without windows: questions are answered by what the user has decided
// beforehand, else by their default.
class Messages : public Prompter {
public:
    explicit Messages(const StringTable& texts) : texts_(texts) {}

    void answerAll(std::optional<Answer> answer) { answer_ = answer; }
    // True when the last thing told was a question and the answer to it.
    [[nodiscard]] bool endedWithQuestion() const { return ended_with_question_; }

    void tell(BoxIcon icon, std::string_view text) override;
    Answer ask(BoxIcon icon, std::string_view text, Answer default_button) override;
    void beep() override {}

    // The text with its values, as an error.
    void error(Text text, std::initializer_list<std::string_view> values = {});

private:
    const StringTable& texts_;
    std::optional<Answer> answer_;
    bool ended_with_question_ = false;
};

// Shows long work on one line of standard error, where that is a terminal; elsewhere nothing.
class ProgressLine : public Progress {
public:
    ProgressLine();
    ~ProgressLine() override { clear(); }

    void setInfo(std::string_view text) override;
    void setBusy(bool) override {}
    // As a bar where it is known how much there is to do.
    void setCount(std::optional<WorkCount> count) override;
    void clear();

private:
    void show(const std::string& line);

    bool is_on_;
    bool is_shown_ = false;
    std::string info_;
};

} // namespace tollwick::ctl
