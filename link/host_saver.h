// Saves a host: the checks, the questions and the requests that follow Ok in the host dialog, in
// their order. Needs no window.
#pragma once

#include "link/service_context.h"
#include "rules/host_entry.h"
#include "rules/host_rules.h"

#include <optional>
#include <string>

namespace tollwick {

enum class HostSaveOutcome {
    Refused,    // the user corrects a field
    Stopped,    // the user does not go on
    LinkFailed, // told; the dialog closes
    Saved,
};

struct HostSaveResult {
    HostSaveOutcome outcome;
    std::optional<HostField> field; // of a refusal
};

class HostSaver {
public:
    explicit HostSaver(ServiceContext& context) : context_(context) {}

    // Saves what was entered as the current host; a new one joins the host list. `script_text` is
    // what the login script holds, with CR LF line ends; without one no script is sent. Throws a
    // HostNumberError 6 when a number does not fit, before anything is sent.
    HostSaveResult save(const HostEntry& entered, const std::optional<std::string>& script_text);

private:
    HostSaveResult refuse(const HostProblem& problem);
    std::optional<HostSaveResult> saveScript(HostEntry& entry,
                                             const std::optional<std::string>& script_text);
    SpoolOutcome removeDirectory(const std::string& directory);
    HostSaveOutcome saveRecord(const HostEntry& entry, const std::string& spool_directory);
    [[nodiscard]] bool hasTelephony() const;

    ServiceContext& context_;
};

} // namespace tollwick
