// What the option windows call the kinds of music.
#pragma once

#include <array>

namespace hullrider {

struct KindName {
    const char* one;
    const char* many;
};

// By MusicType, the stations after them.
inline constexpr std::array<KindName, 4> kKindNames{{{"MIDI", "MIDI"},
                                                     {"Audio file", "Audio files"},
                                                     {"Tracker module", "Tracker modules"},
                                                     {"Internet radio", "Internet radio"}}};

}  // namespace hullrider
