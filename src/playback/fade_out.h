// The old item's way out. One process-wide stream mutex guards the stopping and freeing of old handles: the UI thread
// and the fade workers both do it.
#pragma once

#include <memory>
#include <mutex>

#include "state/playback_state.h"

namespace hullrider {

std::mutex& StreamMutex();

// Stops and frees a slot's stream under the stream mutex and empties the slot. An empty slot is left alone.
void FreeStream(StreamSlot& slot);

// Starts the worker that waits until `handle` has slid to silence and then frees it. Sets `fadeInProgress` for that
// time. The worker is detached and may outlive the player: it owns its part of `fade`, and the audio library refuses a
// handle that was freed meanwhile.
void FadeOutAndFreeStream(const std::shared_ptr<FadeState>& fade, StreamSlot handle, int32_t fadeMs);

// Clears `fadeInProgress` when the fading stream was cut off; its worker changes nothing any more.
void ForgetFade(FadeState& fade);

}  // namespace hullrider
