// Where a song begins to sound: nobody should wait for music through a silence. Any thread.
#pragma once

#include <atomic>
#include <optional>
#include <span>
#include <vector>

#include "audio/level_meter.h"
#include "playback/play_window.h"
#include "state/playback_state.h"

namespace hullrider {

// A start is silent when nothing louder than -60 dB of full scale sounds for this long.
inline constexpr double kLongestSilentStartSec = 1.0;

// What is looked at in one go, and the length of one of its peaks.
inline constexpr uint32_t kLookAheadMs = 2000;
inline constexpr uint32_t kPeakMs = 50;

// The first of the peaks that sounds; nothing when none does.
std::optional<size_t> FirstSounding(std::span<const StereoPeak> peaks);

// The loudness as the levels of a playing stream would give it: the mean of the first ten root mean squares above 0,
// 0 to 32768. Nothing when all is silent.
std::optional<float> RmsOfPeaks(std::span<const StereoPeak> peaks);

// Decodes ahead from the window's start, where the stream stands, and moves on to the next place that sounds when the
// start is silent, round the song's end if need be; the window is moved with it. When `isHurried` becomes true, no more
// is decoded than to know that it sounds. False when the song is silent all through, or the stream was freed; `rms`
// says how loud its beginning is.
bool SettleOnSound(StreamSlot handle, double lengthSec, double fadeSec, PlayWindow& window,
                   const std::atomic<bool>& isHurried, std::optional<float>& rms);

}  // namespace hullrider
