// Answers prompts in advance: the test names the prompts that it expects, in their order. One that
// comes unexpected, and one that is left over at the end, fails the test.
#pragma once

#include "base/prompter.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <string_view>
#include <utility>

namespace tollwick {

class RecordingPrompter : public Prompter {
public:
    RecordingPrompter() = default;
    RecordingPrompter(const RecordingPrompter&) = delete;
    RecordingPrompter& operator=(const RecordingPrompter&) = delete;
    ~RecordingPrompter() override {
        for (const std::string& left : expected_)
            ADD_FAILURE() << "Prompt that never came: " << left;
    }

    void expectBeep() { expected_.emplace_back("beep"); }
    void expectBox(BoxIcon icon, std::string_view text) {
        expected_.push_back(describe(icon, text));
    }
    // True when every prompt that was expected has come.
    [[nodiscard]] bool done() const { return expected_.empty(); }

    void beep() override { take("beep"); }
    void tell(BoxIcon icon, std::string_view text) override { take(describe(icon, text)); }
    Answer ask(BoxIcon icon, std::string_view text, Answer) override {
        take(describe(icon, text) + ", as a question");
        return Answer::No;
    }

private:
    static std::string describe(BoxIcon icon, std::string_view text) {
        constexpr std::string_view kIcons[] = {"plain", "question", "exclamation", "critical"};
        return std::string(kIcons[static_cast<std::size_t>(icon)]) + ": " + std::string(text);
    }
    void take(const std::string& prompt) {
        if (expected_.empty())
            expected_.emplace_back("none");
        EXPECT_EQ(prompt, expected_.front());
        expected_.pop_front();
    }

    std::deque<std::string> expected_;
};

} // namespace tollwick
