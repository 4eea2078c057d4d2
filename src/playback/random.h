// Random numbers for choosing music: the same fractions and indices on every system, where rand() differs in range.
#pragma once

#include <cstddef>
#include <random>

namespace hullrider {

class Random {
public:
    Random() : engine_(std::random_device{}()) {}
    explicit Random(uint32_t seed) : engine_(seed) {}

    // Uniform in [0, 1].
    double Fraction() { return std::uniform_real_distribution<double>(0.0, 1.0)(engine_); }

    // Uniform in 0 .. count - 1; `count` is at least 1.
    size_t Index(size_t count) { return std::uniform_int_distribution<size_t>(0, count - 1)(engine_); }

private:
    std::mt19937 engine_;
};

}  // namespace hullrider
