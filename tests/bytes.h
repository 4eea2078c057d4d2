// Numbers as the formats of files hold them.
#pragma once

#include <cstdint>
#include <string>

namespace hullrider {

inline std::string LittleEndian(uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; i++) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

inline std::string BigEndian(uint64_t value, int bytes) {
    const std::string text = LittleEndian(value, bytes);
    return {text.rbegin(), text.rend()};
}

// A WAV file of whole samples: 1 for integers, 3 for floats.
inline std::string WavFile(int format, uint32_t rate, uint32_t channels, uint32_t sampleBytes,
                           const std::string& data) {
    return "RIFF" + LittleEndian(36 + data.size(), 4) + "WAVEfmt " + LittleEndian(16, 4) +
           LittleEndian(static_cast<uint64_t>(format), 2) + LittleEndian(channels, 2) + LittleEndian(rate, 4) +
           LittleEndian(rate * channels * sampleBytes, 4) + LittleEndian(channels * sampleBytes, 2) +
           LittleEndian(sampleBytes * 8, 2) + "data" + LittleEndian(data.size(), 4) + data;
}

}  // namespace hullrider
