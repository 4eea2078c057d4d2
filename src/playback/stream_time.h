// A stream's position and length in seconds, and times as text. Any thread.
#pragma once

#include <string>

#include "state/playback_state.h"

namespace hullrider {

// 0 for an empty slot. The length of a damaged file may shrink while it plays, to the part that can be played.
double PositionSec(StreamSlot handle);
double LengthSec(StreamSlot handle);

// Minutes and seconds, with hours if there are any: "1:05", "12:00:07". 0:00 for negative and absurdly large times.
std::string FormatTime(double seconds);

}  // namespace hullrider
