// Builds a small four-channel ProTracker module for tests ("Amiga MOD", M.K.): one looped square wave of `periodFrames`
// samples, played at the period of the given value in every eighth row by the first `voices` channels.
#pragma once

#include "tests/bytes.h"

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

// An Impulse Tracker module ("ITTECH.TXT") with an empty pattern, and with so many samples that all name the same
// packed bytes, of which each unpacks to eight.
inline std::string PackedModuleBytes(size_t samples, size_t packedBytes) {
    const size_t headers = 192 + 2 + samples * 4 + 4;
    std::string file = "IMPM" + std::string(26, '\0') + LittleEndian(0x1004, 2) + LittleEndian(2, 2) +
                       LittleEndian(0, 2) + LittleEndian(samples, 2) + LittleEndian(1, 2) + LittleEndian(0x214, 2) +
                       LittleEndian(0x214, 2) + LittleEndian(1, 2) + LittleEndian(0, 2) +
                       std::string{'\x7F', 48, 6, 125, '\x7F', 0} + std::string(10, '\0') + std::string(64, 32) +
                       std::string(64, 64) + std::string("\0\xFF", 2);
    for (size_t i = 0; i < samples; i++) file += LittleEndian(headers + i * 80, 4);
    file += LittleEndian(0, 4);
    for (size_t i = 0; i < samples; i++) {
        file += "IMPS" + std::string(13, '\0') + std::string{64, 9, 64} + std::string(26, '\0') + LittleEndian(1, 2) +
                LittleEndian(packedBytes * 8, 4) + std::string(8, '\0') + LittleEndian(8363, 4) + std::string(8, '\0') +
                LittleEndian(headers + samples * 80, 4) + std::string(4, '\0');
    }
    for (size_t i = 0; i < packedBytes; i += 2) file += LittleEndian(0x1000, 2);
    return file;
}

// A PolyTracker module with an empty pattern, and with so many samples that all name the same bytes.
inline std::string PolyModuleBytes(size_t samples, size_t sampleBytes) {
    const size_t pattern = (608 + samples * 80 + 15) / 16 * 16;
    std::string file = std::string(28, '\0') + std::string{26, 3, 2, 0} + LittleEndian(1, 2) +
                       LittleEndian(samples, 2) + LittleEndian(1, 2) + LittleEndian(4, 2) + LittleEndian(0, 4) +
                       "PTMF" + std::string(48 + 256, '\0') + LittleEndian(pattern / 16, 2) + std::string(254, '\0');
    for (size_t i = 0; i < samples; i++) {
        file += std::string(1, '\1') + std::string(12, '\0') + std::string(1, '\x40') + LittleEndian(8363, 2) +
                LittleEndian(0, 2) + LittleEndian(pattern + 64, 4) + LittleEndian(sampleBytes, 4) +
                std::string(50, '\0') + "PTMS";
    }
    file.resize(pattern + 64);
    return file + std::string(sampleBytes, '\x11');
}

// The module in the wrapping of "MMCMP", which would unpack to any size; here it is not packed.
inline std::string WrappedModuleBytes(const std::string& module) {
    constexpr size_t kBlockTable = 24, kBlock = 28;
    const std::string size = LittleEndian(module.size(), 4);
    return "ziRCONia" + LittleEndian(14, 2) + LittleEndian(0x1310, 2) + LittleEndian(1, 2) + size +
           LittleEndian(kBlockTable, 4) + LittleEndian(0, 2) + LittleEndian(kBlock, 4) + size + size +
           LittleEndian(0, 4) + LittleEndian(1, 2) + LittleEndian(0, 6) + LittleEndian(0, 4) + size + module;
}

}  // namespace hullrider
