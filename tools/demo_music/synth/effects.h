// Rooms and echoes: each turns what is sent to it into what comes back, without the dry sound.
#pragma once

#include "demo_music/synth/stereo.h"

namespace hullrider::demo {

// A feedback delay network of eight lines: Jot and Chaigne, "Digital Delay Networks for Designing Artificial
// Reverberators" (AES 90, 1991). `seconds` to -60 dB; highs die faster.
Stereo Reverberate(const Stereo& sent, double seconds);

// An echo that goes from side to side, each one darker and `feedback` times as loud.
Stereo Echo(const Stereo& sent, double delaySeconds, double feedback);

// Cuts what is below hearing and would only eat headroom.
void RemoveRumble(Stereo& sound);

// Scales to `loudnessLufs` (ITU-R BS.1770, integrated), then turns down the peaks over `ceiling` (1 is full scale)
// smoothly, looking a few milliseconds ahead.
void Master(Stereo& sound, double loudnessLufs, double ceiling);

// In LUFS; far below -70 for silence.
double LoudnessOf(const Stereo& sound);

}  // namespace hullrider::demo
