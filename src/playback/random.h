// Random numbers for choosing music: the same fractions and indices on every system, where rand() and the standard
// library's distributions differ.
#pragma once

#include <cstdint>
#include <random>

namespace hullrider {

class Random {
public:
    Random() : engine_((uint64_t{std::random_device{}()} << 32) | std::random_device{}()) {}
    explicit Random(uint64_t seed) : engine_(seed) {}

    // Uniform in [0, 1), in steps of 2^-53.
    double Fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

    // Uniform in 0 .. count - 1; `count` is at least 1.
    uint64_t Index(uint64_t count) {
        // Draws from the remainder above the largest multiple of `count` would favor low indices.
        const uint64_t tooHigh = UINT64_MAX - UINT64_MAX % count;
        uint64_t drawn = engine_();
        while (drawn >= tooHigh) drawn = engine_();
        return drawn % count;
    }

    // Seeds another generator.
    uint64_t Seed() { return engine_(); }

private:
    std::mt19937_64 engine_;
};

}  // namespace hullrider
