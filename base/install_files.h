// The install folder: makes sure that it is there, and that it holds what came with the program.
#pragma once

#include "base/log_writer.h"

#include <string>
#include <string_view>

namespace tollwick {

// All paths are UTF-8.

// Sets the log folder, within the install folder, and creates and logs what is missing of either.
void prepareFolders(std::string_view install_folder, LogWriter& log);

// Brings into the install folder what lies in the folder `supplied`, which may be empty: catalogue,
// note, and the help of this language under its common name. What is there as it was placed is
// replaced when it differs; a site's own stays, and a catalogue that differs is then laid beside it
// as "MODEMS.NEW", once. What cannot be placed is done without.
void placeSuppliedFiles(std::string_view supplied, std::string_view install_folder,
                        Integer lang_base);

// Gives help files that lie there under the names of their languages their common names. Throws
// when one cannot be renamed.
void placeHelpFiles(std::string_view install_folder);

} // namespace tollwick
