#include "base/files.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tollwick {

bool flushToDisk(const std::filesystem::path& file) {
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const bool flushed = FlushFileBuffers(handle) != 0;
    return CloseHandle(handle) != 0 && flushed;
}

std::string driveOf(std::string_view path) {
    std::error_code error;
    return fromPath(std::filesystem::absolute(toPath(path), error).root_name());
}

} // namespace tollwick
