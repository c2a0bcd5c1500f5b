// What the program reads: secrets, and files that are given to it.
#pragma once

#include "ctl/messages.h"

#include <optional>
#include <string>

namespace tollwick::ctl {

inline constexpr std::string_view kStandardInput = "-";

// The first line of the file, or the next one of standard input for "-"; without blanks around it.
// Nothing after telling why.
std::optional<std::string> readSecretFile(const std::string& file, Messages& messages);

// All of the file, or what is left of standard input for "-". Nothing after telling why, which may
// be that it is larger than `max_size`.
std::optional<std::string> readInput(const std::string& file, std::size_t max_size,
                                     Messages& messages);

} // namespace tollwick::ctl
