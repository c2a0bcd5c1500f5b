#include "ctl/field_arguments.h"

#include "ctl/input.h"

#include <algorithm>

namespace tollwick::ctl {
namespace {

constexpr std::string_view kFixed[] = {"state", "identity", "record_number", "spool_directory",
                                       "service_version"};

} // namespace

bool isFixedField(std::string_view name) {
    return name.starts_with("unnamed_") ||
           std::find(std::begin(kFixed), std::end(kFixed), name) != std::end(kFixed);
}

ExitStatus readAssignments(Session& session, std::span<const std::string> words,
                           std::vector<Assignment>& assignments) {
    // From standard input the password comes first.
    if (const auto status = session.findPassword(); status != ExitStatus::Done)
        return status;
    for (const std::string& word : words) {
        const std::size_t sign = word.find('=');
        if (sign == std::string::npos || sign == 0)
            return session.refuse(Text::CtlNoAssignment, {word});
        Assignment assignment{word.substr(0, sign), word.substr(sign + 1)};
        if (isSecret(assignment.name)) {
            // Not told what stands there: it may be the secret itself.
            if (!assignment.value.starts_with('@'))
                return session.refuse(Text::CtlSecretFromFile, {assignment.name});
            const auto secret = readSecretFile(assignment.value.substr(1), session.messages);
            if (!secret)
                return ExitStatus::Usage;
            assignment.value = *secret;
        }
        assignments.push_back(std::move(assignment));
    }
    return ExitStatus::Done;
}

} // namespace tollwick::ctl
