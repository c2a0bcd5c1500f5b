#include "base/files.h"

#include <fstream>
#include <random>

namespace tollwick {

bool flushToDisk(const std::filesystem::path& file); // files_posix.cpp, files_windows.cpp

std::string joinPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (path.empty() || path.back() != kPathSeparator)
        path.push_back(kPathSeparator);
    return path.append(name);
}

std::filesystem::path toPath(std::string_view utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

std::string fromPath(const std::filesystem::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

std::optional<std::string> readWholeFile(const std::filesystem::path& file, std::size_t max_size) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return {};
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return {};
    std::string bytes;
    char chunk[65536];
    do {
        stream.read(chunk, sizeof chunk);
        bytes.append(chunk, static_cast<std::size_t>(stream.gcount()));
        if (bytes.size() > max_size)
            return {};
    } while (stream);
    if (stream.bad())
        return {};
    return bytes;
}

bool replaceFile(const std::filesystem::path& file, std::string_view bytes, FileAccess access) {
    std::error_code error;
    if (file.has_parent_path())
        std::filesystem::create_directories(file.parent_path(), error);
    // A link is followed, so that the file it names is the one replaced.
    const std::filesystem::path target = std::filesystem::weakly_canonical(file, error);
    const std::filesystem::path& final_path = error ? file : target;
    std::filesystem::path temporary = final_path;
    // Of its own, as another console may be writing the same file.
    temporary += '.' + std::to_string(std::random_device()()) + ".new";

    std::ofstream stream(temporary, std::ios::binary | std::ios::trunc);
    if (access == FileAccess::Owner)
        std::filesystem::permissions(
            temporary, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write,
            error);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (stream && flushToDisk(temporary)) {
        std::filesystem::rename(temporary, final_path, error);
        if (!error)
            return true;
    }
    std::filesystem::remove(temporary, error);
    return false;
}

bool appendToFile(const std::filesystem::path& file, std::string_view bytes) {
    std::error_code error;
    const std::uintmax_t size_before =
        std::filesystem::exists(file, error) ? std::filesystem::file_size(file, error) : 0;
    std::ofstream stream(file, std::ios::binary | std::ios::app);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (stream)
        return true;
    if (!error)
        std::filesystem::resize_file(file, size_before, error);
    return false;
}

} // namespace tollwick
