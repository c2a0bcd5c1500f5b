#include "ctl/messages.h"

#include "base/text.h"
#include "base/utf8.h"
#include "ctl/terminal.h"

#include <algorithm>
#include <cstdio>

namespace tollwick::ctl {
namespace {

constexpr std::size_t kFetchedStep = 50; // entries between two looks at the line
constexpr std::size_t kBarWidth = 30;

void print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

} // namespace

std::string printable(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const char32_t c = takeCodePoint(text);
        if (c != '\r')
            appendCodePoint(result, isControl(c) && c != '\n' ? kReplacementCharacter : c);
    }
    return result;
}

void Messages::tell(BoxIcon, std::string_view text) {
    ended_with_question_ = false;
    print("tollwickctl: " + printable(text) + '\n');
}

Answer Messages::ask(BoxIcon icon, std::string_view text, Answer default_button) {
    const Answer answer = answer_.value_or(default_button);
    const std::string_view word = texts_(answer == Answer::Yes ? Text::Yes : Text::No);
    tell(icon, std::string(text).append(" - ").append(word));
    ended_with_question_ = true;
    return answer;
}

void Messages::error(Text text, std::initializer_list<std::string_view> values) {
    tell(BoxIcon::Critical, filledIn(texts_(text), values));
}

ProgressLine::ProgressLine() : is_on_(terminal::isErrors()) {}

void ProgressLine::show(const std::string& line) {
    if (!is_on_)
        return;
    print("\r\x1b[K" + printable(line));
    std::fflush(stderr);
    is_shown_ = true;
}

void ProgressLine::clear() {
    if (is_shown_)
        print("\r\x1b[K");
    is_shown_ = false;
}

void ProgressLine::setInfo(std::string_view text) {
    info_ = text;
}

void ProgressLine::setCount(std::optional<WorkCount> count) {
    if (!count)
        return clear();
    if (!count->of) {
        if (count->done > 0 && count->done % kFetchedStep == 0)
            show(info_ + ' ' + std::to_string(count->done));
        return;
    }
    const std::size_t of = *count->of;
    const std::size_t full = of == 0 ? kBarWidth : kBarWidth * std::min(count->done, of) / of;
    show('[' + std::string(full, '#') + std::string(kBarWidth - full, '.') + "] " +
         std::to_string(count->done) + '/' + std::to_string(of));
}

} // namespace tollwick::ctl
