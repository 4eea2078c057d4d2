#include "display/marquee.h"

#include <algorithm>
#include <cmath>

namespace hullrider {

namespace {

constexpr double kRestSec = 2.5;

}  // namespace

int32_t MarqueeOffset(const MarqueeLine& line, double shownSec) {
    if (!line.Scrolls() || line.pxPerSec <= 0.0) return 0;
    const int32_t roundPx = line.textPx + line.gapPx;
    const double runSec = roundPx / line.pxPerSec;
    const double inRound = std::fmod(std::max(shownSec, 0.0), kRestSec + runSec);
    const auto offset = static_cast<int32_t>((inRound - kRestSec) * line.pxPerSec);
    return std::clamp(offset, 0, roundPx - 1);
}

}  // namespace hullrider
