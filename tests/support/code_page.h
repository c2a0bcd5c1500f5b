// The ANSI code page that the tests run with.
#pragma once

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace tollwick {

// Whether texts that are not all ASCII have the bytes that the expectations give them.
inline bool ansiIsWindows1252() {
#ifdef _WIN32
    return GetACP() == 1252;
#else
    return true;
#endif
}

} // namespace tollwick
