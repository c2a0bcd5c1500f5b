#include "rules/list_layout.h"

#include <algorithm>
#include <sstream>
#include <string>

namespace tollwick {
namespace {

constexpr std::string_view kSection = "Lists";
constexpr int kMinWidth = 150;    // twips; a narrower column could not be found again
constexpr int kMaxWidth = 60'000; // twips

std::string widthsName(std::string_view node_key) {
    return std::string(node_key) + "Widths";
}

std::string sortName(std::string_view node_key) {
    return std::string(node_key) + "Sort";
}

std::vector<int> readNumbers(Settings& settings, const std::string& name) {
    std::istringstream text(settings.read({kSection, name, ""}));
    std::vector<int> numbers;
    while (!(text >> std::ws).eof()) {
        int number = 0;
        if (!(text >> number))
            return {};
        numbers.push_back(number);
    }
    return numbers;
}

} // namespace

ListLayout readListLayout(Settings& settings, std::string_view node_key, std::size_t columns) {
    ListLayout layout;
    layout.widths = readNumbers(settings, widthsName(node_key));
    if (layout.widths.size() != columns)
        layout.widths.clear();
    for (int& width : layout.widths)
        width = std::clamp(width, kMinWidth, kMaxWidth);
    const std::vector<int> sort = readNumbers(settings, sortName(node_key));
    if (sort.size() == 2 && sort[0] >= 0 && static_cast<std::size_t>(sort[0]) < columns)
        layout.sort = {sort[0], sort[1] != 0};
    return layout;
}

void storeListLayout(Settings& settings, std::string_view node_key, const ListLayout& layout) {
    std::string widths;
    for (const int width : layout.widths)
        widths.append(widths.empty() ? "" : " ").append(std::to_string(width));
    settings.write({kSection, widthsName(node_key), ""}, widths);
    settings.write({kSection, sortName(node_key), ""},
                   layout.sort.column < 0 ? std::string()
                                          : std::to_string(layout.sort.column) +
                                                (layout.sort.descending ? " 1" : " 0"));
}

} // namespace tollwick
