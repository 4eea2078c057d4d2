// The state of the current channel in the audio library, for the panel. UI thread.
#pragma once

#include <cstdint>
#include <string>

#include "state/playback_state.h"

namespace hullrider {

// At one moment. All 0 when nothing plays.
struct ChannelReading {
    double positionSec = 0.0;
    bool paused = false;
    bool isBuffering = false;  // a station: nothing sounds until more has arrived
    std::string codec = {};         // of a station: "MP3"; empty when it is unknown
    int32_t bitRate = 0;       // of a station, in kbit/s; 0: unknown
};
ChannelReading ReadChannel(const PlaybackState& playback);

// The latest peaks, 0 to 1.
struct StereoLevel {
    float left = 0.0F, right = 0.0F;
};
StereoLevel ReadLevel(const PlaybackState& playback);

}  // namespace hullrider
