#include "ctl/input.h"

#include "base/files.h"
#include "base/text.h"

#include <iostream>

namespace tollwick::ctl {
namespace {

constexpr std::size_t kMaxSecretFile = 64 * 1024;

std::optional<std::string> readStandardInput(std::size_t max_size) {
    std::string bytes;
    for (char c = 0; std::cin.get(c);) {
        bytes.push_back(c);
        if (bytes.size() > max_size)
            return {};
    }
    return bytes;
}

std::optional<std::string> readLine(std::size_t max_size) {
    std::string line;
    for (char c = 0; std::cin.get(c) && c != '\n';) {
        line.push_back(c);
        if (line.size() > max_size)
            return {};
    }
    return std::cin || !line.empty() ? std::optional(line) : std::nullopt;
}

std::optional<std::string> readFile(const std::string& file, std::size_t max_size) {
    return readWholeFile(toPath(file), max_size);
}

} // namespace

std::optional<std::string> readSecretFile(const std::string& file, Messages& messages) {
    std::optional<std::string> text =
        file == kStandardInput ? readLine(kMaxSecretFile) : readFile(file, kMaxSecretFile);
    if (!text) {
        messages.error(Text::CtlFileNotRead, {file});
        return {};
    }
    std::string_view line = *text;
    if (line.starts_with(kByteOrderMark))
        line.remove_prefix(kByteOrderMark.size());
    return std::string(withoutBlanks(line.substr(0, line.find('\n')), " \r"));
}

std::optional<std::string> readInput(const std::string& file, std::size_t max_size,
                                     Messages& messages) {
    std::optional<std::string> bytes =
        file == kStandardInput ? readStandardInput(max_size) : readFile(file, max_size);
    if (!bytes)
        messages.error(Text::CtlFileNotRead, {file});
    return bytes;
}

} // namespace tollwick::ctl
