// Builds Standard MIDI Files for tests.
#pragma once

#include <initializer_list>
#include <vector>

#include "tests/bytes.h"

namespace hullrider {

inline std::string Bytes(std::initializer_list<int> bytes) {
    std::string text;
    for (const int byte : bytes) text += static_cast<char>(byte);
    return text;
}

// A delta time.
inline std::string Delta(uint32_t ticks) {
    std::string text(1, static_cast<char>(ticks & 0x7F));
    while ((ticks >>= 7) != 0) text.insert(text.begin(), static_cast<char>((ticks & 0x7F) | 0x80));
    return text;
}

inline std::string At(uint32_t delta, std::initializer_list<int> bytes) {
    return Delta(delta) + Bytes(bytes);
}

inline std::string Tempo(uint32_t delta, uint32_t microsPerQuarter) {
    return Delta(delta) + Bytes({0xFF, 0x51, 3}) + BigEndian(microsPerQuarter, 3);
}

inline std::string EndOfTrack(uint32_t delta = 0) {
    return Delta(delta) + Bytes({0xFF, 0x2F, 0});
}

inline std::string MidiFile(uint32_t format, uint32_t division, const std::vector<std::string>& tracks) {
    std::string file = "MThd" + BigEndian(6, 4) + BigEndian(format, 2) +
                       BigEndian(static_cast<uint32_t>(tracks.size()), 2) + BigEndian(division, 2);
    for (const std::string& track : tracks) {
        file += "MTrk" + BigEndian(static_cast<uint32_t>(track.size()), 4) + track;
    }
    return file;
}

}  // namespace hullrider
