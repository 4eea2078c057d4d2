// What the picking of items keeps from one pick to the next: a random generator for each kind of draw, the songs to
// draw from, and the songs that lately could not be opened.
#pragma once

#include "playback/candidate_lists.h"
#include "playback/random.h"
#include "playback/unavailable_songs.h"

namespace hullrider {

struct PickerState {
    PickerState() = default;
    explicit PickerState(uint64_t seed)
        : categoryRandom(seed), songRandom(~seed), windowRandom(seed + 1), fontRandom(seed + 2) {}

    // One each, so that a setting that adds draws of one kind leaves the others as they would have been.
    Random categoryRandom;
    Random songRandom;
    Random windowRandom;  // where a song starts and how long it plays
    Random fontRandom;
    CandidateLists candidates;  // as BuildWeightedSongList left them
    UnavailableSongs unavailable;
};

}  // namespace hullrider
