// What differs between platforms about the terminal that the program runs on.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tollwick::ctl::terminal {

// Has the standard streams carry UTF-8 as it is.
void prepareStreams();

[[nodiscard]] bool isInput();  // standard input
[[nodiscard]] bool isErrors(); // standard error

// Shows the prompt (UTF-8) on standard error and reads a line (UTF-8) from standard input, which is
// a terminal, without echo. Nothing after Ctrl+C or at the end of the input.
std::optional<std::string> readSecret(std::string_view prompt);

} // namespace tollwick::ctl::terminal
