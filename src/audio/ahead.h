// A channel's sound besides its level: what it has decoded ahead, and how long it has been silent. Any thread but the
// callback.
#pragma once

#include <cstdint>
#include <vector>

#include "audio/level_meter.h"

namespace hullrider {

// The peaks of what a stopped channel has decoded ahead (BASS_ChannelUpdate), before its effects and volume, with 1.0
// as full scale: one for each whole `spanMs` from where it would begin to play. Empty for a wrong handle.
std::vector<StereoPeak> PeaksAhead(uint32_t handle, uint32_t spanMs);

// How many seconds the channel has stayed at or below -60 dBFS up to now, before its volume. 0 when it does not play.
double QuietSec(uint32_t handle);

}  // namespace hullrider
