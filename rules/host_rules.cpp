#include "rules/host_rules.h"

#include "base/ansi.h"
#include "base/numeric.h"
#include "base/utf8.h"
#include "wire/comrecord.h"
#include "wire/record_packing.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr double kShortestUucpTimeout = 2;
constexpr std::string_view kScriptExtension = ".SCP";

bool isSameHost(const HostRecord& one, const HostRecord& other) {
    return one.record_number == other.record_number;
}

} // namespace

bool CheckHostExists(std::string_view name, const HostRecord& self,
                     std::span<const HostRecord> hosts) {
    const std::string wanted = toUpper(trimmed(name));
    return std::any_of(hosts.begin(), hosts.end(), [&](const HostRecord& host) {
        return !isSameHost(host, self) && toUpper(trimmed(host.display_name.text())) == wanted;
    });
}

bool CheckDefaultDomainExists(const HostRecord& self, std::span<const HostRecord> hosts) {
    return std::any_of(hosts.begin(), hosts.end(), [&](const HostRecord& host) {
        return !isSameHost(host, self) && host.default_domain != kFalse;
    });
}

bool CheckLocalHostExists(std::string_view name, const HostRecord& self,
                          std::span<const HostRecord> hosts) {
    const std::string wanted = trimmed(name);
    return std::any_of(hosts.begin(), hosts.end(), [&](const HostRecord& host) {
        return !isSameHost(host, self) && trimmed(host.local_uucp_name.text()) == wanted;
    });
}

std::optional<HostProblem> checkHost(const HostEntry& entry, const HostRecord& self,
                                     std::span<const HostRecord> hosts) {
    if (trimmed(entry.display_name).empty())
        return HostProblem{Text::HostNameMissing, BoxIcon::Critical, HostField::DisplayName};
    if (CheckHostExists(entry.display_name, self, hosts))
        return HostProblem{Text::HostNameTaken, BoxIcon::Critical, HostField::DisplayName};
    if (trimmed(entry.mail_domain).empty())
        return HostProblem{Text::MailDomainMissing, BoxIcon::Critical, HostField::MailDomain};
    if (trimmed(entry.remote_uucp_name).empty())
        return HostProblem{Text::RemoteHostMissing, BoxIcon::Critical, HostField::RemoteUucpName};
    if (entry.default_domain && CheckDefaultDomainExists(self, hosts))
        return HostProblem{Text::DefaultDomainTaken, BoxIcon::Exclamation,
                           HostField::DefaultDomain};
    if (numericValue(entry.uucp_timeout.text) < kShortestUucpTimeout)
        return HostProblem{Text::UucpTimeoutTooShort, BoxIcon::Exclamation, HostField::UucpTimeout};
    if (const auto excess = excessOf(entry))
        return HostProblem{excess->field == HostField::Modem ? Text::HostModemTooLong
                                                             : Text::HostTextTooLong,
                           BoxIcon::Critical, excess->field, excess->most};
    return {};
}

std::optional<HostProblem> checkScriptName(std::string_view entered) {
    // As the service gets it, with a "?" for each character that the code page lacks.
    const std::string name = fromAnsi(toAnsi(entered));
    if (name.find_first_of(":\\") != std::string::npos)
        return HostProblem{Text::ScriptNameHasPath, BoxIcon::Critical, HostField::ScriptFileName};
    if (name.find_first_of("?*\\/<>|\"") != std::string::npos ||
        toAnsi(completedScriptName(name)).size() > decltype(HostRecord::script_file_name)::width)
        return HostProblem{Text::ScriptNameIllegal, BoxIcon::Critical, HostField::ScriptFileName};
    return {};
}

std::string completedScriptName(std::string_view name) {
    std::string completed = trimmed(name);
    if (completed.empty())
        return completed;
    const std::size_t size = completed.size();
    const std::size_t tail = std::min(size, kScriptExtension.size());
    if (toUpper(std::string_view(completed).substr(size - tail)) == kScriptExtension)
        return completed;
    return completed.append(completed.back() == '.' ? "scp" : ".scp");
}

bool scriptFits(std::string_view name, std::string_view text) {
    ScriptRecord script;
    script.file_name = name;
    script.text = text;
    return fitsBlock(script);
}

bool isSpoolDirectoryShared(std::string_view directory, const HostRecord& self,
                            std::span<const HostRecord> hosts) {
    const std::string wanted = toUpper(trimmed(directory));
    return std::any_of(hosts.begin(), hosts.end(), [&](const HostRecord& host) {
        return !isSameHost(host, self) && toUpper(trimmed(host.spool_directory.text())) == wanted;
    });
}

SpoolOutcome decideSpoolDirectory(const HostEntry& entry, const HostRecord& self,
                                  std::span<const HostRecord> hosts, const SpoolSteps& steps,
                                  std::string& directory) {
    const std::string name = trimmed(entry.remote_uucp_name);
    const auto isToBeShared = [&](Answer default_button) {
        return !CheckLocalHostExists(name, self, hosts) ||
               steps.ask(Text::ShareSpoolDirectory, default_button) == Answer::Yes;
    };
    if (self.state == 0) {
        directory = isToBeShared(Answer::No) ? name : trimmed(entry.mail_domain) + "-" + name;
        return SpoolOutcome::Decided;
    }
    const std::string loaded = trimmed(self.remote_uucp_name.text());
    directory = self.spool_directory.text();
    if (loaded.empty() || name == loaded)
        return SpoolOutcome::Decided;
    if (!CheckLocalHostExists(loaded, self, hosts)) {
        if (steps.ask(Text::RemoteHostChanged, Answer::No) != Answer::Yes)
            return SpoolOutcome::Stopped;
        if (!isSpoolDirectoryShared(directory, self, hosts))
            if (const auto outcome = steps.remove_directory(trimmed(directory));
                outcome != SpoolOutcome::Decided)
                return outcome;
    }
    // The display name here, where a new host takes its mail domain, and another default: wanted.
    directory = isToBeShared(Answer::Yes) ? name : entry.display_name + "-" + name;
    return SpoolOutcome::Decided;
}

ConnectFrames connectFrames(int connect_using, bool do_not_use_tapi, Single service_version) {
    switch (connect_using) {
    case 0: {
        // The telephony frame comes with the box ticked, whatever its caption says: wanted.
        const bool telephony = service_version >= kTelephonyVersion && do_not_use_tapi;
        return {telephony, !telephony, false, {}};
    }
    case 1:
        return {false, false, true, true};
    case 2:
        return {false, false, true, {}};
    default:
        return {};
    }
}

bool rasOnlyShownOnPageChange(int connect_using) {
    return connect_using != 2;
}

bool isNodeNameCharacter(char32_t character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') || character == '_' || character == '-' ||
           character == '.';
}

} // namespace tollwick
