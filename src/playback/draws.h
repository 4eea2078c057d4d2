// What the engine draws from: one source of chance for each kind of draw, the lists of what can be drawn, and what is
// known to be unavailable.
#pragma once

#include "playback/candidate_lists.h"
#include "playback/random.h"
#include "playback/unavailable_songs.h"

namespace hullrider {

struct Draws {
    Draws() = default;
    explicit Draws(uint64_t seed) : category(seed), song(~seed), window(seed + 1), font(seed + 2) {}

    Random category;
    Random song;
    Random window;  // where a song starts and how long it plays
    Random font;
    CandidateLists candidates;  // as BuildWeightedSongList left them
    UnavailableSongs unavailable;
};

}  // namespace hullrider
