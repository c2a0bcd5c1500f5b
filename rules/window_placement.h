// Where the main window was left: read from and stored in the settings, in twips.
#pragma once

#include "base/settings_store.h"

#include <span>

namespace tollwick {

inline constexpr int kTwipsPerPixel = 15; // of a device-independent pixel

constexpr int toTwips(int pixels) {
    return pixels * kTwipsPerPixel;
}
// Rounded to the nearest pixel.
constexpr int toPixels(int twips) {
    return (twips + (twips >= 0 ? kTwipsPerPixel / 2 : -(kTwipsPerPixel / 2))) / kTwipsPerPixel;
}

namespace window_state {
inline constexpr int Normal = 0;
inline constexpr int Minimized = 1;
inline constexpr int Maximized = 2;
} // namespace window_state

struct WindowPlacement {
    int state = window_state::Normal;
    int left = 0; // twips, as all that follow
    int top = 0;
    int width = 0;
    int height = 0;
    int splitter = 0;

    // A window at 0,0 with exactly this size is centred instead of placed. That this is not the
    // default size is wanted: a first start places the window at the top left corner.
    [[nodiscard]] bool isCentred() const {
        return left + top == 0 && width == 7110 && height == 4455;
    }
};

// Throws RunTimeError 6 when a stored number exceeds 16 bits.
WindowPlacement readPlacement(Settings& settings);

// Where a window may lie: a screen without its task bars, in twips.
struct ScreenArea {
    int left;
    int top;
    int width;
    int height;
};

// The placement itself when the window can be grabbed on one of the screens; otherwise, as after a
// screen has been taken away, moved onto the first of them and made no larger than that.
WindowPlacement keptOnScreen(WindowPlacement placement, std::span<const ScreenArea> screens);

// A minimized window stores only its state.
void storePlacement(Settings& settings, const WindowPlacement& placement);

// The left edge of the splitter while it is dragged, always at a pixel, and as the window is laid
// out.
int draggedSplitter(int position, int window_width);
int laidOutSplitter(int position, int window_width);

} // namespace tollwick
