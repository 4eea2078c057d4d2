// Builds a small four-channel ProTracker module for tests ("Amiga MOD", M.K.): one looped square wave of `periodFrames`
// samples, played at the period of the given value in every eighth row by the first `voices` channels.
#pragma once

#include <string>

namespace hullrider {

inline std::string ModuleBytes(int period = 428, int patternCount = 1, bool jumpsBack = false, int voices = 4,
                               int jumpTo = 0) {
    constexpr int kSampleBytes = 64, kHalfWave = 16;
    const auto word = [](int value) { return std::string{static_cast<char>(value >> 8), static_cast<char>(value)}; };
    std::string sample;
    for (int i = 0; i < kSampleBytes; i++) sample += static_cast<char>(i / kHalfWave % 2 == 0 ? 64 : -64);

    std::string file = "test module";
    file.resize(20);
    file += std::string(22, '\0') + word(kSampleBytes / 2) + std::string{0, 64} + word(0) + word(kSampleBytes / 2);
    for (int i = 1; i < 31; i++) file += std::string(22, '\0') + std::string(6, '\0') + word(1);
    file += static_cast<char>(patternCount);
    file += static_cast<char>(127);
    file += std::string(128, '\0') + "M.K.";
    for (int row = 0; row < 64; row++) {
        for (int channel = 0; channel < 4; channel++) {
            std::string cell(4, '\0');
            if (row % 8 == 0 && channel < voices) {
                cell[0] = static_cast<char>(period >> 8);
                cell[1] = static_cast<char>(period);
                cell[2] = 0x10;
            }
            if (jumpsBack && row == 63) {  // to a place of the song, for ever
                cell[2] = 0x0B;
                cell[3] = static_cast<char>(jumpTo);
            }
            file += cell;
        }
    }
    return file + sample;
}

}  // namespace hullrider
