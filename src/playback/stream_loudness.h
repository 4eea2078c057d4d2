// The loudness of a stream: the root mean square of its two levels, 0 to 32768, before its volume is applied.
#pragma once

#include <optional>

#include "state/playback_state.h"

namespace hullrider {

// The loudness now. Nothing when the stream does not play.
std::optional<float> CurrentRms(StreamSlot handle);

// The mean of up to 10 values above 0 within 1.5 s. False when there is none, or when the stream is no longer the
// current one. Blocks meanwhile. Any thread.
bool MeasureRms(const VolumeState& volume, StreamSlot handle, float& value);

// Updates the average loudness of the current item: exponential with a time constant of 3 s, but the plain mean during
// its first 3 s. Due every 250 ms; any other rate gives the same average. UI thread.
void SampleLoudness(PlaybackState& playback);

// Restarts the average for another item. UI thread.
void RestartLoudness(PlaybackState& playback, StreamSlot handle);

}  // namespace hullrider
