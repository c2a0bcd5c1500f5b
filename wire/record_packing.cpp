#include "wire/record_packing.h"

#include <cstdio>

namespace tollwick {

void removeScratchFile() {
    std::remove("@move@"); // nearly always there is none
}

} // namespace tollwick
