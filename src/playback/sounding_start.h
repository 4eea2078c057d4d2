// Finds where a song begins to sound, so that nobody waits through silence. Any thread.
#pragma once

#include <atomic>
#include <optional>
#include <span>
#include <vector>

#include "audio/level_meter.h"
#include "playback/play_window.h"
#include "state/playback_state.h"

namespace hullrider {

// A start is silent when it stays below -60 dBFS for this long.
inline constexpr double kLongestSilentStartSec = 1.0;

// How much is decoded ahead at once, and the length of one peak.
inline constexpr uint32_t kLookAheadMs = 2000;
inline constexpr uint32_t kPeakMs = 50;

// The first peak above the threshold; nothing when there is none.
std::optional<size_t> FirstSounding(std::span<const StereoPeak> peaks);

// The loudness as measured from a playing stream's levels: the mean of the first ten RMS values above 0, 0 to 32768.
// Nothing when all is silent.
std::optional<float> RmsOfPeaks(std::span<const StereoPeak> peaks);

// Decodes ahead from the window's start, the stream's position, and moves on past silence to the next place that
// sounds, wrapping around the song's end; the window moves along. Once `isHurried`, it decodes only until something
// sounds. False when the whole song is silent or the stream was freed. `rms` receives the loudness of the beginning.
bool SettleOnSound(StreamSlot handle, double lengthSec, double fadeSec, PlayWindow& window,
                   const std::atomic<bool>& isHurried, std::optional<float>& rms);

// Decodes ahead from the stream's position and returns the loudness there; nothing when it is silent.
std::optional<float> MeasureAhead(StreamSlot handle, const std::atomic<bool>& isHurried);

}  // namespace hullrider
