#include "ctl/terminal.h"

#include <csignal>
#include <cstdio>
#include <termios.h>
#include <unistd.h>

namespace tollwick::ctl::terminal {
namespace {

volatile std::sig_atomic_t interrupted = 0;

// Takes the echo away for as long as it lives, and has Ctrl+C end a read instead of the program.
class WithoutEcho {
public:
    WithoutEcho() {
        interrupted = 0;
        struct sigaction action {};
        action.sa_handler = [](int) { interrupted = 1; };
        sigaction(SIGINT, &action, &signal_before_);
        tcgetattr(STDIN_FILENO, &before_);
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~WithoutEcho() {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
        sigaction(SIGINT, &signal_before_, nullptr);
    }
    WithoutEcho(const WithoutEcho&) = delete;
    WithoutEcho& operator=(const WithoutEcho&) = delete;

private:
    termios before_{};
    struct sigaction signal_before_ {};
};

} // namespace

void prepareStreams() {}

bool isInput() {
    return isatty(STDIN_FILENO) != 0;
}

bool isErrors() {
    return isatty(STDERR_FILENO) != 0;
}

std::optional<std::string> readSecret(std::string_view prompt) {
    std::string line;
    bool has_line = false;
    {
        const WithoutEcho silent;
        std::fwrite(prompt.data(), 1, prompt.size(), stderr);
        std::fflush(stderr);
        for (char c = 0; !interrupted && read(STDIN_FILENO, &c, 1) == 1;) {
            has_line = c == '\n';
            if (has_line)
                break;
            line.push_back(c);
        }
    }
    std::fputc('\n', stderr);
    return has_line ? std::optional(line) : std::nullopt;
}

} // namespace tollwick::ctl::terminal
