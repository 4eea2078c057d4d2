// A song of one steady tone.
#pragma once

#include <cmath>
#include <numbers>

#include "tests/bytes.h"

namespace hullrider {

// The bytes of a mono 16-bit WAV file at 8 kHz, a quarter of full scale. The player goes by what is in a file, not by
// its name.
inline std::string ToneWav(double frequencyHz, double lengthSec) {
    constexpr uint32_t kRate = 8000;
    std::string samples;
    for (double i = 0; i < lengthSec * kRate; ++i) {
        const double value = 8192.0 * std::sin(2.0 * std::numbers::pi * frequencyHz * i / kRate);
        samples += LittleEndian(static_cast<uint64_t>(std::llround(value)), 2);
    }
    return WavFile(1, kRate, 1, 2, samples);
}

}  // namespace hullrider
