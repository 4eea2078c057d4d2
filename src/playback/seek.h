// Moving within what plays. UI thread.
#pragma once

#include "state/playback_state.h"

namespace hullrider {

// Goes to that second of the current item. Its play window is widened so that it plays on from there: a place before
// the window's start is not taken for a file that began anew, and from a place after its end the song plays to its own.
// False, and nothing is changed, when there is no such place.
bool SeekTo(PlaybackState& playback, double seconds);

}  // namespace hullrider
