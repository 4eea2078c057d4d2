// Seeking within the current item. UI thread.
#pragma once

#include "state/playback_state.h"

namespace hullrider {

// Goes to that second of the current item. Before its play window, the window now begins there; after it, the song
// plays to its end. False, with nothing changed, when there is no such place.
bool SeekTo(PlaybackState& playback, double seconds);

}  // namespace hullrider
