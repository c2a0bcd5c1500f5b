#include "base/ini_store.h"

#include "base/files.h"
#include "base/text.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr std::size_t kMaxFileSize = 1 << 20;
constexpr std::string_view kBlanks = " \t";

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

// A file as its lines, without their ends and without the mark that some editors put before the
// first. All that looks like one goes, so that what is written is read as it was before.
std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    while (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        while (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// Where a setting stands among the lines of a file.
struct Place {
    std::optional<std::size_t> line;        // of the setting itself
    std::optional<std::size_t> section_end; // behind the section's last line that is not blank
};

Place find(const std::vector<std::string>& lines, std::string_view header, std::string_view name) {
    Place place;
    bool inside = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = withoutBlanks(lines[i], kBlanks);
        if (line.starts_with('[')) {
            inside = equalIgnoringCase(line, header);
        } else if (inside && !line.starts_with(';') && !line.starts_with('#')) {
            const std::size_t equals = line.find('=');
            if (equals != std::string_view::npos &&
                equalIgnoringCase(withoutBlanks(line.substr(0, equals), kBlanks), name)) {
                place.line = i;
                return place;
            }
        }
        if (inside && !line.empty())
            place.section_end = i + 1;
    }
    return place;
}

std::string headerOf(std::string_view application, std::string_view section) {
    return std::string("[").append(application).append("\\").append(section).append("]");
}

} // namespace

IniStore::IniStore(std::filesystem::path user_file,
                   std::vector<std::filesystem::path> machine_files)
    : user_file_(std::move(user_file)), machine_files_(std::move(machine_files)) {}

std::optional<std::string> IniStore::read(std::string_view application, std::string_view section,
                                          std::string_view name) {
    const std::string header = headerOf(application, section);
    const auto readFrom = [&](const std::filesystem::path& file) -> std::optional<std::string> {
        const std::optional<std::string> text = readWholeFile(file, kMaxFileSize);
        if (!text)
            return {};
        const std::vector<std::string> lines = splitLines(*text);
        const Place place = find(lines, header, name);
        if (!place.line)
            return {};
        const std::string& line = lines[*place.line];
        return line.substr(line.find('=') + 1);
    };
    // Blanks stand for a setting that nobody has chosen: they do not hide another's choice.
    std::optional<std::string> value = readFrom(user_file_);
    const auto isChosen = [&] { return value && !isBlank(*value); };
    for (std::size_t i = 0; !isChosen() && i < machine_files_.size(); ++i)
        if (std::optional<std::string> of_machine = readFrom(machine_files_[i]))
            value = std::move(of_machine);
    return value;
}

bool IniStore::write(std::string_view application, std::string_view section, std::string_view name,
                     std::string_view value) {
    std::error_code error;
    std::vector<std::string> lines;
    if (std::filesystem::exists(user_file_, error)) {
        const std::optional<std::string> text = readWholeFile(user_file_, kMaxFileSize);
        if (!text)
            return false;
        lines = splitLines(*text);
    } else if (error) {
        return false;
    }

    std::string line = std::string(name) + '=' + std::string(value);
    // A setting is one line; a break within a value would start another.
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    const std::string header = headerOf(application, section);
    const Place place = find(lines, header, name);
    if (place.line) {
        if (lines[*place.line] == line)
            return true;
        lines[*place.line] = line;
    } else if (place.section_end) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(*place.section_end), line);
    } else {
        if (!lines.empty() && !lines.back().empty())
            lines.emplace_back();
        lines.push_back(header);
        lines.push_back(line);
    }

    std::string text;
    for (const std::string& each : lines)
        text.append(each).push_back('\n');
    if (text.size() > kMaxFileSize) // it could not be read again
        return false;
    return replaceFile(user_file_, text);
}

} // namespace tollwick
