// Reading numbers from the bytes of an untrusted file.
#pragma once

#include <cstdint>
#include <string_view>

namespace hullrider {

// Takes numbers off the front of some bytes; past the end they are all 0, and `good` is false.
struct ByteReader {
    std::string_view bytes;
    bool good = true;

    uint8_t Byte() {
        if (bytes.empty()) {
            good = false;
            return 0;
        }
        const auto byte = static_cast<uint8_t>(bytes.front());
        bytes.remove_prefix(1);
        return byte;
    }
    uint32_t BigEndian(int count) {
        uint32_t value = 0;
        for (int i = 0; i < count; i++) value = value << 8 | Byte();
        return value;
    }
    // Seven bits per byte, highest first, at most four bytes.
    uint32_t VariableLength() {
        uint32_t value = 0;
        for (int i = 0; i < 4; i++) {
            const uint8_t byte = Byte();
            value = value << 7 | (byte & 0x7fu);
            if (byte < 0x80) return value;
        }
        good = false;
        return 0;
    }
    std::string_view Take(uint32_t count) {
        if (count > bytes.size()) {
            good = false;
            bytes = {};
            return {};
        }
        const std::string_view taken = bytes.substr(0, count);
        bytes.remove_prefix(count);
        return taken;
    }
};

}  // namespace hullrider
