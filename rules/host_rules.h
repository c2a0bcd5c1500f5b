// The rules of the host dialog: what Ok refuses, which frames are shown, which keys a name takes.
#pragma once

#include "base/prompter.h"
#include "base/string_table.h"
#include "rules/host_entry.h"
#include "wire/records.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tollwick {

// Why an entry is refused, how it is said, and which field gets the focus.
struct HostProblem {
    Text text;
    BoxIcon icon;
    HostField field;
    std::size_t most = 0; // what "%1" of the text stands for: the characters that fit
};

// `self` is the record that is edited: the host list is asked about all others, which are told
// apart by their record numbers.

// True when another host has this display name, case and blanks around it aside.
bool CheckHostExists(std::string_view name, const HostRecord& self,
                     std::span<const HostRecord> hosts);
// True when another host is the primary domain.
bool CheckDefaultDomainExists(const HostRecord& self, std::span<const HostRecord> hosts);
// True when the name is the local node name of another host. That the local and not the remote
// names are looked at is wanted.
bool CheckLocalHostExists(std::string_view name, const HostRecord& self,
                          std::span<const HostRecord> hosts);

// The first problem of the names, the domain, the timeout and the lengths of texts.
std::optional<HostProblem> checkHost(const HostEntry& entry, const HostRecord& self,
                                     std::span<const HostRecord> hosts);

// The problem of a script's file name, if any; blanks around it do not count.
std::optional<HostProblem> checkScriptName(std::string_view entered);
// The name with the extension that it lacks: ".scp", or "scp" behind a full stop. Empty stays
// empty.
std::string completedScriptName(std::string_view name);
// True when name and text (with CR LF line ends) fit the data block of one request.
bool scriptFits(std::string_view name, std::string_view text);

enum class SpoolOutcome {
    Decided,
    Stopped, // the user does not go on, or the service has not removed the old directory
    Failed,  // the link is closed
};
// What the rule of the spool directory needs done on its way.
struct SpoolSteps {
    // A question with the buttons Yes and No.
    std::function<Answer(Text question, Answer default_button)> ask;
    // Has the service remove a directory; what it gives but Decided has been told.
    std::function<SpoolOutcome(const std::string& directory)> remove_directory;
};
// Whether another host has this spool directory, case and blanks around it aside. Such a directory
// is never removed.
bool isSpoolDirectoryShared(std::string_view directory, const HostRecord& self,
                            std::span<const HostRecord> hosts);
// Decides on the host's spool directory, which is put into `directory`, and has the old one removed
// when the host is renamed.
SpoolOutcome decideSpoolDirectory(const HostEntry& entry, const HostRecord& self,
                                  std::span<const HostRecord> hosts, const SpoolSteps& steps,
                                  std::string& directory);

// Which frames and controls the connection page shows.
struct ConnectFrames {
    bool telephony = false; // Win95ModemFrame
    bool modem = false;     // ModemFrame
    bool ras = false;       // RasFrame
    // The controls that only a dial-up connection needs; nothing: they stay as they are.
    std::optional<bool> ras_only;
};
inline constexpr Single kTelephonyVersion = 4;
// `connect_using` is 0 modem, 1 TCP/IP via RAS, 2 clean TCP/IP.
ConnectFrames connectFrames(int connect_using, bool do_not_use_tapi, Single service_version);
// What a change of the page makes of the dial-up controls.
bool rasOnlyShownOnPageChange(int connect_using);

// True for a key that a remote node name may hold.
bool isNodeNameCharacter(char32_t character);

} // namespace tollwick
