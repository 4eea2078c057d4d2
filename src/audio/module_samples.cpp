#include "audio/module_samples.h"

#include <algorithm>
#include <cstddef>

namespace hullrider {

namespace {

constexpr uint64_t kMostPacked = 16;  // unpacked bytes per packed byte: one bit per 16-bit sample

// A little-endian number of the file; bytes past the end are 0.
uint64_t NumberAt(std::string_view file, uint64_t place, size_t bytes) {
    uint64_t number = 0;
    for (size_t i = 0; i < bytes && place + i < file.size(); i++) {
        number |= uint64_t{static_cast<uint8_t>(file[static_cast<size_t>(place + i)])} << (8 * i);
    }
    return number;
}

uint64_t BytesFrom(std::string_view file, uint64_t place) {
    return place < file.size() ? file.size() - place : 0;
}

uint64_t ItSample(std::string_view file, uint64_t header) {
    constexpr uint64_t kHeld = 1, kWide = 2, kStereo = 4, kPacked = 8;
    const uint64_t flags = NumberAt(file, header + 18, 1);
    if ((flags & kHeld) == 0) return 0;
    const uint64_t frameBytes = ((flags & kWide) != 0 ? 2u : 1u) * ((flags & kStereo) != 0 ? 2u : 1u);
    const uint64_t held = BytesFrom(file, NumberAt(file, header + 72, 4));
    return std::min(NumberAt(file, header + 48, 4) * frameBytes, held * ((flags & kPacked) != 0 ? kMostPacked : 1));
}

uint64_t S3mSample(std::string_view file, uint64_t header) {
    constexpr uint64_t kStereo = 2, kWide = 4;
    if (NumberAt(file, header, 1) != 1) return 0;
    const uint64_t flags = NumberAt(file, header + 31, 1);
    const uint64_t frameBytes = ((flags & kWide) != 0 ? 2u : 1u) * ((flags & kStereo) != 0 ? 2u : 1u);
    const uint64_t place = NumberAt(file, header + 13, 1) << 16 | NumberAt(file, header + 14, 2);
    return std::min(NumberAt(file, header + 16, 4) * frameBytes, BytesFrom(file, place * 16));
}

}  // namespace

uint64_t ModuleSampleBytes(std::string_view file) {
    uint64_t bytes = 0;
    const uint64_t orders = NumberAt(file, 32, 2);
    if (file.starts_with("IMPM") || file.starts_with("tpm.")) {
        const uint64_t table = 192 + orders + NumberAt(file, 34, 2) * 4;
        const uint64_t samples = NumberAt(file, 36, 2);
        for (uint64_t i = 0; i < samples; i++) bytes += ItSample(file, NumberAt(file, table + i * 4, 4));
    } else if (BytesFrom(file, 44) >= 4 && file.substr(44, 4) == "SCRM") {
        const uint64_t samples = NumberAt(file, 34, 2);
        for (uint64_t i = 0; i < samples; i++) bytes += S3mSample(file, NumberAt(file, 96 + orders + i * 2, 2) * 16);
    }
    return bytes;
}

}  // namespace hullrider
