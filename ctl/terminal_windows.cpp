#include "ctl/terminal.h"

#include <QString>

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace tollwick::ctl::terminal {

void prepareStreams() {
    SetConsoleOutputCP(CP_UTF8);
    for (std::FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

bool isInput() {
    return _isatty(_fileno(stdin)) != 0;
}

bool isErrors() {
    return _isatty(_fileno(stderr)) != 0;
}

std::optional<std::string> readSecret(std::string_view prompt) {
    std::fwrite(prompt.data(), 1, prompt.size(), stderr);
    std::fflush(stderr);
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    GetConsoleMode(input, &mode);
    SetConsoleMode(input, (mode & ~DWORD{ENABLE_ECHO_INPUT}) | ENABLE_LINE_INPUT);
    wchar_t line[1024];
    DWORD read = 0;
    const bool has_line = ReadConsoleW(input, line, DWORD{1024}, &read, nullptr) != 0 && read > 0;
    SetConsoleMode(input, mode);
    std::fputc('\n', stderr);
    if (!has_line)
        return {};
    std::string text = QString::fromWCharArray(line, static_cast<int>(read)).toStdString();
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.pop_back();
    return text;
}

} // namespace tollwick::ctl::terminal
