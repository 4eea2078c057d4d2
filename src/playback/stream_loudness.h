// How loud a stream is: the root mean square of its two levels, 0 to 32768, before its volume is applied.
#pragma once

#include <optional>

#include "state/playback_state.h"

namespace hullrider {

// Now. Nothing when the stream does not play.
std::optional<float> CurrentRms(StreamSlot handle);

// The mean of up to 10 values above 0 that are met within 1.5 s. False when there is none, or when the stream is no
// longer the current one. Blocks for that time. Any thread.
bool MeasureRms(const VolumeState& volume, StreamSlot handle, float& value);

// Keeps the average loudness of the current item: exponential with a time constant of 3 s, and the plain mean for as
// long as the item is younger than that. Due every 250 ms; any other pace gives the same average. UI thread.
void SampleLoudness(PlaybackState& playback);

// Begins the average anew, for another item. UI thread.
void RestartLoudness(PlaybackState& playback, StreamSlot handle);

}  // namespace hullrider
