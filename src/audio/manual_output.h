// An output without time: sound is rendered when it is asked for, and waits for its decoders. For tests and for
// measurements.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hullrider {

// Instead of BASS_Init; the mixing rate is `rate` Hz. As BASS_Init otherwise. Without `limited`, the sum of the
// channels comes out as it is, also beyond full scale, and at once.
bool InitManualOutput(uint32_t rate, bool limited = false);

// The next `frames` stereo frames of what would be heard, in blocks of at most `blockFrames`. One thread at a time.
bool RenderManually(float* out, size_t frames, size_t blockFrames = 480);

}  // namespace hullrider
