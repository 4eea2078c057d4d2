// An output without real time: sound is rendered on request, waiting for decoders. For tests and measurements.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hullrider {

// Replaces BASS_Init, with a mixing rate of `rate` Hz. Unless `limited`, the sum of the channels is delivered undelayed
// and unchanged, even beyond full scale.
bool InitManualOutput(uint32_t rate, bool limited = false);

// Renders the next `frames` stereo frames of what would be heard, in blocks of at most `blockFrames`. One thread at a
// time.
bool RenderManually(float* out, size_t frames, size_t blockFrames = 480);

}  // namespace hullrider
