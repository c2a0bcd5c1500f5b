// A folder of its own for a test, removed with all that is in it. Its path is not all ASCII.
#pragma once

#include "base/files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tollwick {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do
            path_ = std::filesystem::temp_directory_path() /
                    toPath("tollwick-försök-" + std::to_string(random()));
        while (!std::filesystem::create_directory(path_));
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const {
        return path_ / toPath(name);
    }
    // The path of the folder or of a file in it, as UTF-8.
    [[nodiscard]] std::string text() const { return fromPath(path_); }
    [[nodiscard]] std::string text(std::string_view name) const { return fromPath(*this / name); }

    void write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path file = *this / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }
    // The bytes of a file; those of one that is missing are "(missing)".
    [[nodiscard]] std::string read(std::string_view name) const {
        std::ifstream stream(*this / name, std::ios::binary);
        if (!stream)
            return "(missing)";
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // Names of what is in the folder, sorted.
    [[nodiscard]] std::vector<std::string> names(std::string_view below = "") const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(*this / below))
            names.push_back(fromPath(entry.path().filename()));
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path path_;
};

} // namespace tollwick
