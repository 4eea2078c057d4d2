#include "display/volume_notice.h"

namespace hullrider {

bool VolumeNotice::Follow(float volume, double nowSec) {
    constexpr double kShownSec = 1.5;
    if (volume_ && *volume_ != volume) untilSec_ = nowSec + kShownSec;
    volume_ = volume;
    return nowSec < untilSec_;
}

}  // namespace hullrider
