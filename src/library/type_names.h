// What users read for a type code.
#pragma once

#include <array>

namespace hullrider {

struct TypeName {
    const char* brief;
    const char* one;
    const char* many;
};

// By MusicType; internet radio comes last.
inline constexpr std::array<TypeName, 4> kTypeNames{{{"MIDI", "MIDI", "MIDI"},
                                                     {"MP3", "Audio file", "Audio files"},
                                                     {"Tracker", "Tracker module", "Tracker modules"},
                                                     {"Radio", "Internet radio", "Internet radio"}}};

}  // namespace hullrider
