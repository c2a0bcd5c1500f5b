#include "base/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tollwick {

bool flushToDisk(const std::filesystem::path& file) {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool flushed = ::fsync(descriptor) == 0;
    return ::close(descriptor) == 0 && flushed;
}

std::string driveOf(std::string_view path) {
    std::error_code error;
    std::filesystem::path mount = std::filesystem::absolute(toPath(path), error);
    struct stat here {};
    while (mount.has_relative_path() && ::stat(mount.c_str(), &here) != 0)
        mount = mount.parent_path();
    ::stat(mount.c_str(), &here);
    // Upwards for as long as the parent is on the same device.
    while (mount.has_relative_path()) {
        struct stat above {};
        if (::stat(mount.parent_path().c_str(), &above) != 0 || above.st_dev != here.st_dev)
            break;
        mount = mount.parent_path();
    }
    return fromPath(mount);
}

} // namespace tollwick
