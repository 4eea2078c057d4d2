// Where a window may be placed. Pure.
#pragma once

#include <cstdint>

namespace hullrider {

struct ScreenBox {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
};

// Moves the box, if needed, so that enough of its title bar is visible in the work area to be grabbed with the mouse.
// `titleHeight` includes the window's frame.
ScreenBox BringTitleIntoSight(ScreenBox box, const ScreenBox& workArea, int32_t titleHeight);

}  // namespace hullrider
