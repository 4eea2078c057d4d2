// The old item's way out. One process-wide stream mutex guards the stopping and freeing of old handles: the UI thread
// and the fade workers both do it.
#pragma once

#include <mutex>

#include "state/playback_state.h"

namespace hullrider {

std::mutex& StreamMutex();

// Stops and frees a slot's stream under the stream mutex and empties the slot. An empty slot is left alone.
void FreeStream(StreamSlot& slot);

// Starts the worker that waits until `handle` has slid to silence and then frees it. Sets `fadeInProgress` for that
// time. The worker is detached; what it touches lives as long as the process, and a handle that was freed meanwhile is
// refused by the audio library.
void FadeOutAndFreeStream(PlaybackState& playback, StreamSlot handle, int32_t fadeMs);

}  // namespace hullrider
