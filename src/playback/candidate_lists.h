// Songs to draw from, each with a weight.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "state/play_item.h"
#include "state/selection_state.h"

namespace hullrider {

// Not one entry for each time that a song may be drawn: the weights are added up instead, so that a favorite of any
// count takes one entry.
struct WeightedSongs {
    std::vector<SongChoice> songs;
    std::vector<int64_t> upTo;  // the sum of the weights of the songs up to and including this one
};

// What can be drawn from the whole library, kept because building it takes longer than many draws.
struct CandidateLists {
    std::array<WeightedSongs, 4> byCategory;  // MIDI to favorites, those that are away left out
    std::array<int32_t, 4> songsOf{};         // songs of each, whatever the filter and wherever they are
    int64_t weightOfAll = 0;                  // of all songs but those that are never drawn

    // What they were built from.
    const void* playlists = nullptr;
    uint64_t playlistCount = 0;
    uint64_t libraryRevision = 0;
    uint64_t unavailableRevision = 0;
    int32_t filter = kAllSongs;
};

}  // namespace hullrider
