// Everything that a pick and its opening depend on: when any of it changes, a prepared item is no longer what would be
// picked. UI thread.
#pragma once

#include <cstdint>
#include <optional>

#include "state/app_state.h"

namespace hullrider {

struct SelectionBasis {
    int32_t playMode = 0, favoritesFilter = 0;
    int32_t playlist = 0, song = 0, customStation = 0, internetStation = 0;
    std::optional<int32_t> nextQueued;
    bool shuffle = false, radioPlaying = false, customStationActive = false, stationPreview = false;
    bool excludeRadioOnce = false, mixedMusic = false, previousSongMode = false;
    uint64_t picks = 0, historyCursor = 0, libraryRevision = 0, stationCount = 0;
    int32_t historyDepth = 0;
    SelectionWeights weights, customWeights;
    int32_t minSec = 0, maxSec = 0, stationMinSec = 0, stationMaxSec = 0, fadeMs = 0;
    bool demonstration = false;
    uint32_t slotFont = 0;
    int32_t songsBeforeFont = 0;

    bool operator==(const SelectionBasis&) const = default;
};

SelectionBasis BasisOf(const AppState& app);

}  // namespace hullrider
