#include "rules/window_placement.h"

#include "base/numeric.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

namespace tollwick {
namespace {

constexpr int kDragMargin = 500;
// What of the title bar must be on a screen, in twips.
constexpr int kGrabWidth = 1200;
constexpr int kGrabHeight = 300;
constexpr int kLayoutMargin = 1500;

// Twips of the pixels that lie wholly before this position.
constexpr int wholePixels(int twips) {
    return twips - twips % kTwipsPerPixel;
}

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

WindowPlacement keptOnScreen(WindowPlacement placement, std::span<const ScreenArea> screens) {
    const auto canBeGrabbed = [&](const ScreenArea& screen) {
        const int visible = std::min(placement.left + placement.width, screen.left + screen.width) -
                            std::max(placement.left, screen.left);
        return visible >= std::min(kGrabWidth, placement.width) && placement.top >= screen.top &&
               placement.top + kGrabHeight <= screen.top + screen.height;
    };
    if (screens.empty() || std::ranges::any_of(screens, canBeGrabbed))
        return placement;
    const ScreenArea& screen = screens.front();
    placement.width = std::min(placement.width, screen.width);
    placement.height = std::min(placement.height, screen.height);
    placement.left =
        std::clamp(placement.left, screen.left, screen.left + screen.width - placement.width);
    placement.top =
        std::clamp(placement.top, screen.top, screen.top + screen.height - placement.height);
    return placement;
}

void storePlacement(Settings& settings, const WindowPlacement& placement) {
    // What is read back is a 16-bit number; a wider window must not lose its whole placement for
    // that.
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
    const int least = wholePixels(kDragMargin + kTwipsPerPixel - 1);
    const int most = wholePixels(window_width - kDragMargin - 1);
    return std::max(least, std::min(wholePixels(position), most));
}

int laidOutSplitter(int position, int window_width) {
    // In this order: a narrow window gets what is left of its own margin.
    return std::min(std::max(position, kLayoutMargin), window_width - kLayoutMargin);
}

} // namespace tollwick
