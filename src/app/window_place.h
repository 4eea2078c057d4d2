// Where a window may stand. Pure.
#pragma once

#include <cstdint>

namespace hullrider {

struct ScreenBox {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
};

// The box, moved so that enough of its title can be seen and caught with the mouse on a screen of that work area; where
// it is if that is so already. `titleHeight` is that of the window's frame and title.
ScreenBox BringTitleIntoSight(ScreenBox box, const ScreenBox& workArea, int32_t titleHeight);

}  // namespace hullrider
