// Keeps NaN out of the sound: filters, ramps and sums would never get rid of it.
#pragma once

#include <cmath>
#include <cstddef>

namespace hullrider {

// The sample; silence for NaN or an absurdly loud one.
inline float Sane(float sample, float loudest) {
    return std::fabs(sample) <= loudest ? sample : 0.0f;
}

inline void MakeSane(float* samples, size_t count, float loudest) {
    for (size_t i = 0; i < count; i++) samples[i] = Sane(samples[i], loudest);
}

// The limit for effects. Only the sum has to stay within full scale.
inline constexpr float kLoudestEffect = 1e5f;

}  // namespace hullrider
