// Weighted lists of songs to draw from.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "state/play_item.h"
#include "state/selection_state.h"

namespace hullrider {

// A song takes one entry whatever its weight, because weights are kept as a running sum.
struct WeightedSongs {
    std::vector<SongChoice> songs;
    std::vector<int64_t> upTo;  // sum of the weights up to and including this song
};

// The lists of the whole library, kept because building them takes longer than many draws.
struct CandidateLists {
    std::array<WeightedSongs, 4> byCategory;  // MIDI to favorites, without songs that are away
    std::array<int32_t, 4> songsOf{};         // songs of each category, including filtered ones and those away
    int64_t weightOfAll = 0;                  // of all songs
    std::map<int32_t, WeightedSongs> every;   // by filter, as far as they were asked for

    // The state they were built from.
    const void* playlists = nullptr;
    uint64_t playlistCount = 0;
    uint64_t libraryRevision = 0;
    uint64_t unavailableRevision = 0;
    int32_t filter = kAllSongs;
};

}  // namespace hullrider
