// The state of the current channel in the audio library, for the panel. UI thread.
#pragma once

#include "state/playback_state.h"

namespace hullrider {

// At one moment. All 0 when nothing plays.
struct ChannelReading {
    double positionSec = 0.0;
    bool paused = false;
};
ChannelReading ReadChannel(const PlaybackState& playback);

// The latest peaks, 0 to 1.
struct StereoLevel {
    float left = 0.0F, right = 0.0F;
};
StereoLevel ReadLevel(const PlaybackState& playback);

}  // namespace hullrider
