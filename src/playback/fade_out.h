// Fading out and freeing the old item. One process-wide stream mutex guards the stopping and freeing of old handles and
// the correction of the volume, which both the UI thread and workers do.
//
// Workers are detached and may outlive the player: they share ownership of their state, do nothing once it is closed,
// and the audio library refuses freed handles.
#pragma once

#include <memory>
#include <mutex>

#include "state/playback_state.h"

namespace hullrider {

std::mutex& StreamMutex();

// Stops and frees a slot's stream under the stream mutex and empties the slot. An empty slot is left alone.
void FreeStream(StreamSlot& slot);

// Starts the worker that waits until `handle` has slid to silence and then frees it. Sets `fadeInProgress` meanwhile.
// UI thread.
void FadeOutAndFreeStream(const std::shared_ptr<FadeState>& fade, StreamSlot handle, int32_t fadeMs);

// The same with loudness following on: the worker also starts the volume adjustment, and does only that for handle 0.
// UI thread.
void FadeOutAndFreeStreamAuto(const PlaybackState& playback, StreamSlot handle, int32_t fadeMs);

// Clears `fadeInProgress` after the fading stream was cut off; its worker then does nothing. UI thread.
void ForgetFade(FadeState& fade);

}  // namespace hullrider
