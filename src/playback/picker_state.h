// What the picker keeps between picks: a random generator for each purpose, the songs to draw from, and the songs that
// could not be opened lately.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "platform/play_clock.h"
#include "playback/candidate_lists.h"
#include "playback/random.h"
#include "playback/unavailable_songs.h"

namespace hullrider {

struct StationNetwork;  // radio/station_network.h

struct PickerState {
    PickerState() = default;
    explicit PickerState(uint64_t seed)
        : categoryRandom(seed), songRandom(~seed), windowRandom(seed + 1), fontRandom(seed + 2) {}

    // Separate, so that a draw for one purpose does not shift the sequences of the others.
    Random categoryRandom;
    Random songRandom;
    Random windowRandom;  // where a song starts and how long it plays
    Random fontRandom;
    CandidateLists candidates;  // as BuildWeightedSongList left them
    UnavailableSongs unavailable;
    std::shared_ptr<const StationNetwork> network;               // must be set when there are stations
    std::unordered_map<std::string, PlayTime> searchedStations;  // by name: when the directory was last asked for them
};

}  // namespace hullrider
