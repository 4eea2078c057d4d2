// Chance that is the same on every machine and in every build: the standard library's distributions are not.
#pragma once

#include <cstdint>

namespace hullrider::demo {

// splitmix64 (Steele, Lea, Flood: Fast Splittable Pseudorandom Number Generators, 2014).
class Random {
public:
    explicit Random(uint64_t seed) : state_(seed) {}

    uint64_t Next() {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    // Uniform in [0, 1).
    double Unit() { return static_cast<double>(Next() >> 11) * 0x1p-53; }
    // Uniform in [-1, 1).
    double Bipolar() { return 2 * Unit() - 1; }
    // Uniform in [0, count), count > 0.
    int Below(int count) { return static_cast<int>(Unit() * count); }
    // Around 0, bell-shaped, never beyond [-1, 1].
    double Bell() { return (Bipolar() + Bipolar() + Bipolar()) / 3; }

private:
    uint64_t state_;
};

}  // namespace hullrider::demo
