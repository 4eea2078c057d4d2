// A song of one steady tone.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

namespace hullrider {

// The bytes of a mono 16-bit WAV file at 8 kHz, a quarter of full scale. The player goes by what is in a file, not by
// its name.
inline std::string ToneWav(double frequencyHz, double lengthSec) {
    constexpr uint32_t kRate = 8000;
    constexpr double kAmplitude = 8192.0;
    const auto frames = static_cast<uint32_t>(lengthSec * kRate);
    std::string file;
    const auto put = [&](uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) file += static_cast<char>(value >> (8 * i) & 0xFF);
    };
    file += "RIFF";
    put(36 + 2 * frames, 4);
    file += "WAVEfmt ";
    put(16, 4), put(1, 2), put(1, 2), put(kRate, 4), put(2 * kRate, 4), put(2, 2), put(16, 2);
    file += "data";
    put(2 * frames, 4);
    const double step = 2.0 * 3.14159265358979 * frequencyHz / kRate;
    for (uint32_t i = 0; i < frames; ++i) {
        put(static_cast<uint32_t>(static_cast<int32_t>(kAmplitude * std::sin(step * i))), 2);
    }
    return file;
}

}  // namespace hullrider
