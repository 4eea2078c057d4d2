// What is known of the file that plays, for the statistics window. UI thread.
#pragma once

#include <cstdint>
#include <string>

#include "playback/song_title.h"
#include "state/playback_state.h"

namespace hullrider {

struct ChannelFacts {
    SongTitle title;        // as the tags have it
    uint32_t rateHz = 0;    // 0: nothing plays
    uint32_t channels = 0;  // 1 or 2
    std::string soundFont;  // the file of a MIDI song's SoundFont; else empty
};

// Does not read the file.
ChannelFacts ReadChannelFacts(const PlaybackState& playback, const SoundFontState& fonts);

}  // namespace hullrider
