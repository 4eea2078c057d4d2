// Keeps out of the sound what is no number: filters, ramps and sums would never get rid of it again.
#pragma once

#include <cmath>
#include <cstddef>

namespace hullrider {

// The sample, or silence for one that is no number or absurdly loud.
inline float Sane(float sample, float loudest) {
    return std::fabs(sample) <= loudest ? sample : 0.0f;
}

inline void MakeSane(float* samples, size_t count, float loudest) {
    for (size_t i = 0; i < count; i++) samples[i] = Sane(samples[i], loudest);
}

// What effects may leave. Within full scale only the sum has to be.
inline constexpr float kLoudestEffect = 1e5f;

}  // namespace hullrider
