// Whole files, and the few things that differ between platforms about paths.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tollwick {

#ifdef _WIN32
inline constexpr char kPathSeparator = '\\';
#else
inline constexpr char kPathSeparator = '/';
#endif

// folder + separator + name, without a second separator when the folder ends in one.
std::string joinPath(std::string_view folder, std::string_view name);

// Paths are kept as UTF-8 texts.
std::filesystem::path toPath(std::string_view utf8);
std::string fromPath(const std::filesystem::path& path);

// The bytes of a file, or nothing when it cannot be read or is larger than `max_size` bytes.
std::optional<std::string> readWholeFile(const std::filesystem::path& file, std::size_t max_size);

// Who may read a file that is written: as usual in its folder, or from its first byte on only its
// owner (where the platform has such permissions).
enum class FileAccess { Usual, Owner };

// Replaces the file whole or not at all: written beside it, flushed to the disk and renamed over
// it. Missing folders are created.
bool replaceFile(const std::filesystem::path& file, std::string_view bytes,
                 FileAccess access = FileAccess::Usual);

// Appends to a file, which is created when missing. False when that fails; nothing of the bytes is
// left in the file then.
bool appendToFile(const std::filesystem::path& file, std::string_view bytes);

// The name of the drive (elsewhere: the mount point) that the path lies on.
std::string driveOf(std::string_view path);

} // namespace tollwick
