// Tells the volume in the status line while it is turned, and for a moment after. Pure.
#pragma once

#include <optional>

namespace hullrider {

class VolumeNotice {
public:
    // Whether to show the volume at that time. The first volume is no change.
    bool Follow(float volume, double nowSec);

private:
    std::optional<float> volume_;
    double untilSec_ = 0.0;
};

}  // namespace hullrider
