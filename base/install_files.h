// The install folder: makes sure that it is there, and that it holds what came with the program.
#pragma once

#include "base/log_writer.h"

#include <string>
#include <string_view>

namespace tollwick {

// All paths are UTF-8.

// Sets the log folder, within the install folder, and creates and logs what is missing of either.
void prepareFolders(std::string_view install_folder, LogWriter& log);

// Copies from the folder `supplied`, which may be empty, what the install folder lacks: the
// catalogue, the note and the help of this language. What cannot be copied is done without.
void copySuppliedFiles(std::string_view supplied, std::string_view install_folder,
                       Integer lang_base);

// Gives the help files of the installed language their common names. Throws when one cannot be
// renamed.
void placeHelpFiles(std::string_view install_folder);

} // namespace tollwick
