// The old item's way out. One process-wide stream mutex guards the stopping and freeing of old handles and the
// correction of the volume: the UI thread and the workers both do it.
//
// Workers are detached and may outlive the player: they own their part of the state, do nothing once it is closed, and
// the audio library refuses a handle that was freed meanwhile.
#pragma once

#include <memory>
#include <mutex>

#include "state/playback_state.h"

namespace hullrider {

std::mutex& StreamMutex();

// Stops and frees a slot's stream under the stream mutex and empties the slot. An empty slot is left alone.
void FreeStream(StreamSlot& slot);

// Starts the worker that waits until `handle` has slid to silence and then frees it. Sets `fadeInProgress` for that
// time. UI thread.
void FadeOutAndFreeStream(const std::shared_ptr<FadeState>& fade, StreamSlot handle, int32_t fadeMs);

// The same with loudness following on: the worker also starts the volume adjustment. With handle 0 there is nothing to
// wait for, and only that is done. UI thread.
void FadeOutAndFreeStreamAuto(const PlaybackState& playback, StreamSlot handle, int32_t fadeMs);

// Clears `fadeInProgress` when the fading stream was cut off; its worker changes nothing any more. UI thread.
void ForgetFade(FadeState& fade);

}  // namespace hullrider
