// The icons on the keys and on the display. Pure.
#pragma once

#include "display/coverage.h"

namespace hullrider {

enum class Icon : uint8_t {
    kPrevious,
    kNext,
    kPlay,
    kPause,
    kBack,
    kForward,
    kShuffle,
    kFilter,
    kFewer,
    kMore,
    kStar,
    kPower,
};

// Adds the icon, about 12 design units wide and high, around `center`.
void AddIcon(Coverage& coverage, float scale, Icon icon, Point center);

}  // namespace hullrider
