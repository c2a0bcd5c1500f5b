#include "ctl/commands.h"

namespace tollwick::ctl {
namespace {

constexpr CommandOption kWatch[] = {
    {"watch", "", "Shows a line every second until a transport that was seen has ended."}};
constexpr CommandOption kQuestions[] = {
    {"yes", "", "Answers every question with yes; without it and --no, by its default."},
    {"no", "", "Answers every question with no."}};
constexpr CommandOption kKeepDirectory[] = {
    {"keep-directory", "", "Leaves the spool directories of the hosts alone."}};
constexpr CommandOption kAll[] = {{"all", "", "Deletes every mail."}};
constexpr CommandOption kWait[] = {{"wait", "", "Ends when the transport has ended."}};
constexpr CommandOption kNewPassword[] = {
    {"new-password-file", "FILE",
     "Holds the new password in its first line; - is standard input."}};
constexpr CommandOption kRestore[] = {
    {"dry-run", "", "Says what would be done and does nothing."},
    {"delete", "", "Removes what the file lacks."},
    {"only", "LIST", "Restores only these: settings,schedules,hosts,scripts."}};

// clang-format off
constexpr Command kCommands[] = {
    {"status", "", "Shows what the service is transporting.", 0, 0, kWatch, showStatus},
    {"settings", "", "Lists the settings of the service.", 0, 0, {}, listSettings},
    {"settings set", "NAME=VALUE...", "Changes settings.", 1, kAnyNumber, {}, setSettings},
    {"schedules", "", "Lists the schedules.", 0, 0, {}, listSchedules},
    {"schedules add", "NAME=VALUE...", "Adds a schedule.", 1, kAnyNumber, {}, addSchedule},
    {"schedules change", "NUMBER NAME=VALUE...", "Changes a schedule.", 2, kAnyNumber, {}, changeSchedule},
    {"schedules delete", "NUMBER...", "Deletes schedules.", 1, kAnyNumber, {}, deleteSchedules},
    {"hosts", "", "Lists the hosts.", 0, 0, {}, listHosts},
    {"hosts show", "HOST", "Shows all fields of a host.", 1, 1, {}, showHost},
    {"hosts add", "NAME=VALUE...", "Adds a host.", 1, kAnyNumber, kQuestions, addHost},
    {"hosts change", "HOST NAME=VALUE...", "Changes a host.", 2, kAnyNumber, kQuestions, changeHost},
    {"hosts delete", "HOST...", "Deletes hosts and their spool directories.", 1, kAnyNumber, kKeepDirectory, deleteHosts},
    {"outbox", "", "Lists the mails that wait.", 0, 0, {}, listOutbox},
    {"outbox delete", "FILE...", "Deletes mails by their files.", 0, kAnyNumber, kAll, deleteMails},
    {"scripts", "", "Lists the login scripts.", 0, 0, {}, listScripts},
    {"scripts show", "SCRIPT", "Puts out a login script.", 1, 1, {}, showScript},
    {"scripts save", "SCRIPT FILE", "Stores a file as a login script; - is standard input.", 2, 2, {}, saveScript},
    {"transport start", "", "Starts a transport.", 0, 0, kWait, startTransport},
    {"transport cancel", "", "Cancels the transport.", 0, 0, {}, cancelTransport},
    {"login change", "USER", "Changes the user name and password of the login.", 1, 1, kNewPassword, changeLogin},
    {"backup", "FILE", "Saves settings, schedules, hosts and scripts in a file.", 1, 1, {}, backUp},
    {"diff", "FILE [FILE]", "Tells what differs between a file and the service, or two files.", 1, 2, {}, compare},
    {"restore", "FILE", "Makes the service equal to a file.", 1, 1, kRestore, restore},
};
// clang-format on

} // namespace

std::span<const Command> commands() {
    return kCommands;
}

} // namespace tollwick::ctl
