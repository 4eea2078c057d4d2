// Perceived loudness: integrated loudness by ITU-R BS.1770-4, in 400 ms blocks that do not overlap.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "audio/ring.h"

namespace hullrider {

class Loudness {
public:
    explicit Loudness(uint32_t rate);

    // Interleaved stereo frames.
    void Add(const float* frames, size_t count);
    // LKFS of the whole blocks so far; nothing when all of them were silent.
    std::optional<double> Lkfs() const;

private:
    // A second-order filter for both sides.
    struct Stage {
        std::array<double, 3> b{};
        std::array<double, 2> a{};
        std::array<std::array<double, 2>, kStereo> state{};

        double Pass(double in, size_t side);
    };
    double EnergyAbove(double gate) const;

    std::array<Stage, 2> stages_;  // K-weighting: the shelf, then the high-pass
    size_t blockFrames_;
    size_t inBlock_ = 0;
    double energy_ = 0.0;         // of the incomplete block
    std::vector<double> blocks_;  // mean squares
};

}  // namespace hullrider
