// What a channel sounds like besides its level: what it has decoded ahead, and how long it has been silent. Any thread
// but the callback.
#pragma once

#include <cstdint>
#include <vector>

#include "audio/level_meter.h"

namespace hullrider {

// The peaks of what a channel that does not play has decoded ahead (BASS_ChannelUpdate), before its effects and volume,
// 1.0 is full scale: one for each whole `spanMs` from where it would begin to play. Empty for a wrong handle.
std::vector<StereoPeak> PeaksAhead(uint32_t handle, uint32_t spanMs);

// For how many seconds, up to now, what the channel played has stayed at or below -60 dB of full scale, before its
// volume. 0 when it does not play.
double QuietSec(uint32_t handle);

}  // namespace hullrider
