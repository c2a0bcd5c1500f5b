// Answers prompts in advance: the test names the prompts that it expects, in their order. One that
// comes unexpected, and one that is left over at the end, fails the test.
#pragma once

#include "app/prompter.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <string_view>

namespace tollwick {

class RecordingPrompter : public Prompter {
public:
    RecordingPrompter() = default;
    RecordingPrompter(const RecordingPrompter&) = delete;
    RecordingPrompter& operator=(const RecordingPrompter&) = delete;
    ~RecordingPrompter() override {
        for (const Expectation& left : expected_)
            ADD_FAILURE() << "Prompt that never came: " << left.prompt;
    }

    void expectBeep() { expected_.push_back({"beep", Answer::No}); }
    void expectBox(BoxIcon icon, std::string_view text) {
        expected_.push_back({describe(icon, text), Answer::No});
    }
    void expectQuestion(BoxIcon icon, std::string_view text, Answer default_button, Answer answer) {
        expected_.push_back({describe(icon, text) + buttons(default_button), answer});
    }
    // True when every prompt that was expected has come.
    [[nodiscard]] bool done() const { return expected_.empty(); }

    void beep() override { take("beep"); }
    void tell(BoxIcon icon, std::string_view text) override { take(describe(icon, text)); }
    Answer ask(BoxIcon icon, std::string_view text, Answer default_button) override {
        return take(describe(icon, text) + buttons(default_button));
    }

private:
    struct Expectation {
        std::string prompt;
        Answer answer;
    };

    static std::string describe(BoxIcon icon, std::string_view text) {
        constexpr std::string_view kIcons[] = {"plain", "question", "exclamation", "critical"};
        return std::string(kIcons[static_cast<std::size_t>(icon)]) + ": " + std::string(text);
    }
    static std::string buttons(Answer default_button) {
        return default_button == Answer::Yes ? " [Yes]/No" : " Yes/[No]";
    }
    Answer take(const std::string& prompt) {
        if (expected_.empty()) {
            ADD_FAILURE() << "Unexpected prompt: " << prompt;
            return Answer::No;
        }
        const Expectation next = expected_.front();
        expected_.pop_front();
        EXPECT_EQ(prompt, next.prompt);
        return next.answer;
    }

    std::deque<Expectation> expected_;
};

} // namespace tollwick
