// The commands: one table of what each is called, takes and runs.
#pragma once

#include "ctl/exit_status.h"

#include <cstddef>
#include <limits>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tollwick::ctl {

class Session;

// What was given to a command; UTF-8.
struct Arguments {
    std::vector<std::string> words;
    std::map<std::string, std::string, std::less<>> options; // by name, those that were given

    [[nodiscard]] bool has(std::string_view option) const { return options.contains(option); }
};

struct CommandOption {
    std::string_view name;
    std::string_view value; // as the usage shows it; empty for a switch
    std::string_view description;
};

inline constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

struct Command {
    std::string_view name;      // one word or two
    std::string_view arguments; // as the usage shows them
    std::string_view summary;
    std::size_t least; // arguments
    std::size_t most;
    std::span<const CommandOption> options;
    ExitStatus (*run)(Session& session, const Arguments& arguments);
};

std::span<const Command> commands();

ExitStatus showStatus(Session& session, const Arguments& arguments);
ExitStatus listSettings(Session& session, const Arguments& arguments);
ExitStatus setSettings(Session& session, const Arguments& arguments);
ExitStatus listSchedules(Session& session, const Arguments& arguments);
ExitStatus addSchedule(Session& session, const Arguments& arguments);
ExitStatus changeSchedule(Session& session, const Arguments& arguments);
ExitStatus deleteSchedules(Session& session, const Arguments& arguments);
ExitStatus listHosts(Session& session, const Arguments& arguments);
ExitStatus showHost(Session& session, const Arguments& arguments);
ExitStatus addHost(Session& session, const Arguments& arguments);
ExitStatus changeHost(Session& session, const Arguments& arguments);
ExitStatus deleteHosts(Session& session, const Arguments& arguments);
ExitStatus listOutbox(Session& session, const Arguments& arguments);
ExitStatus deleteMails(Session& session, const Arguments& arguments);
ExitStatus listScripts(Session& session, const Arguments& arguments);
ExitStatus showScript(Session& session, const Arguments& arguments);
ExitStatus saveScript(Session& session, const Arguments& arguments);
ExitStatus startTransport(Session& session, const Arguments& arguments);
ExitStatus cancelTransport(Session& session, const Arguments& arguments);
ExitStatus changeLogin(Session& session, const Arguments& arguments);
ExitStatus backUp(Session& session, const Arguments& arguments);
ExitStatus compare(Session& session, const Arguments& arguments);
ExitStatus restore(Session& session, const Arguments& arguments);

} // namespace tollwick::ctl
