#include "ui/main/window_placement.h"

#include "app/numeric.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

namespace tollwick {
namespace {

constexpr int kDragMargin = 500;
constexpr int kLayoutMargin = 1500;

} // namespace

WindowPlacement readPlacement(Settings& settings) {
    const auto number = [&](const Setting& setting) {
        return toInteger(numericValue(settings.read(setting)));
    };
    WindowPlacement placement;
    placement.left = number(setting::WindowXpos);
    placement.top = number(setting::WindowYpos);
    placement.width = number(setting::WindowXsize);
    placement.height = number(setting::WindowYsize);
    placement.splitter = toLong(numericValue(settings.read(setting::SplitterPos)));
    placement.state = number(setting::WindowStateRead);
    return placement;
}

void storePlacement(Settings& settings, const WindowPlacement& placement) {
    // What is read back is a 16-bit number; a wider window must not lose its whole placement for that.
    const auto store = [&](const Setting& setting, int number) {
        settings.write(setting, std::to_string(std::clamp<int>(
                                    number, std::numeric_limits<std::int16_t>::min(),
                                    std::numeric_limits<std::int16_t>::max())));
    };
    store(setting::WindowStateWritten, placement.state);
    if (placement.state == window_state::Minimized)
        return;
    store(setting::WindowXpos, placement.left);
    store(setting::WindowYpos, placement.top);
    store(setting::WindowXsize, placement.width);
    store(setting::WindowYsize, placement.height);
    store(setting::SplitterPos, placement.splitter);
}

int draggedSplitter(int position, int window_width) {
    return std::max(kDragMargin, std::min(position, window_width - kDragMargin));
}

int laidOutSplitter(int position, int window_width) {
    // In this order: a narrow window gets what is left of its own margin.
    return std::min(std::max(position, kLayoutMargin), window_width - kLayoutMargin);
}

} // namespace tollwick
