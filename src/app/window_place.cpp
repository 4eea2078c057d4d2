#include "app/window_place.h"

#include <algorithm>

namespace hullrider {

ScreenBox BringTitleIntoSight(ScreenBox box, const ScreenBox& workArea, int32_t titleHeight) {
    constexpr int32_t kCaughtWidth = 160;  // enough to grab, whether or not it includes the title bar's buttons
    const int32_t width = box.right - box.left, height = box.bottom - box.top;
    const int32_t seen = std::min({kCaughtWidth, width, workArea.right - workArea.left});
    box.left = std::clamp(box.left, workArea.left - width + seen, workArea.right - seen);
    box.top = std::clamp(box.top, workArea.top, std::max(workArea.top, workArea.bottom - titleHeight));
    return {box.left, box.top, box.left + width, box.top + height};
}

}  // namespace hullrider
