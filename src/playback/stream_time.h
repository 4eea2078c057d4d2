// Where a stream is, in seconds, and times as a person reads them. Any thread.
#pragma once

#include <string>

#include "state/playback_state.h"

namespace hullrider {

// 0 for an empty slot. The length may shrink while a damaged file plays: it is then that of what can be played.
double PositionSec(StreamSlot handle);
double LengthSec(StreamSlot handle);

// Minutes and seconds, hours when there are any: "1:05", "12:00:07". Negative and absurd times are 0:00.
std::string FormatTime(double seconds);

}  // namespace hullrider
