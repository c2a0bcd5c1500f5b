// The command line: which command, what it is given, and where the service is.
#pragma once

#include "ctl/commands.h"
#include "ctl/messages.h"

#include <QStringList>

#include <optional>
#include <string>

namespace tollwick::ctl {

// What was given for every command; UTF-8. Absent: the console's own setting.
struct CommonOptions {
    std::optional<std::string> host;
    std::optional<std::string> port; // 1 to 65535
    std::optional<std::string> user;
    std::optional<std::string> password_file; // "-" for standard input
    std::optional<float> timeout;             // seconds
    bool json = false;
};

struct CommandLine {
    const Command* command = nullptr;
    Arguments arguments;
    CommonOptions common;
};

// Nothing when the program is to end with `status`: all is said then. The first of `arguments` is
// the program.
std::optional<CommandLine> readCommandLine(const QStringList& arguments, Messages& messages,
                                           ExitStatus& status);

} // namespace tollwick::ctl
