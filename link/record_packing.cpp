#include "link/record_packing.h"

#include <filesystem>
#include <system_error>

namespace tollwick {

void removeScratchFile() {
    std::error_code ignored;
    std::filesystem::remove("@move@", ignored);
}

} // namespace tollwick
