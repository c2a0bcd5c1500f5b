// NAME=VALUE arguments, and their way into the fields of a record.
#pragma once

#include "base/text.h"
#include "ctl/session.h"
#include "site/field_text.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tollwick::ctl {

// One field to be given a value; both UTF-8.
struct Assignment {
    std::string name;
    std::string value;
};

// The assignments that the words stand for. Of "NAME=@FILE" the value is the first line of the
// file, for secrets, which no argument may hold. What is wrong has been told.
ExitStatus readAssignments(Session& session, std::span<const std::string> words,
                           std::vector<Assignment>& assignments);

// Whether a user may name the field: those without a name and those that the service keeps are not
// for setting.
bool isFixedField(std::string_view name);

// Sets the fields of the record. What is wrong has been told; the record may be changed in part
// then.
template <class Record>
ExitStatus assign(Session& session, std::span<const Assignment> assignments, Record& record) {
    for (const Assignment& assignment : assignments) {
        if (isFixedField(assignment.name))
            return session.refuse(Text::CtlFieldFixed, {assignment.name});
        if (const auto problem = setFieldText(record, assignment.name, assignment.value))
            return session.refuse(
                Text::CtlValueRefused,
                {assignment.name, filledIn(session.texts(problem->text), {problem->part})});
    }
    return ExitStatus::Done;
}

// Reads the words and sees that they fit a record of this kind, before the service is asked for
// anything.
template <class Record>
ExitStatus readFields(Session& session, std::span<const std::string> words,
                      std::vector<Assignment>& assignments) {
    const ExitStatus status = readAssignments(session, words, assignments);
    Record trial;
    return status == ExitStatus::Done ? assign(session, assignments, trial) : status;
}

} // namespace tollwick::ctl
