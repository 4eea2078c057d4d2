// What was picked to come next. A pick takes effect only when its item starts, so that one that is dropped, or cannot
// be played, leaves nothing behind. UI thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "library/song_counts.h"
#include "state/app_state.h"

namespace hullrider {

enum class Selection {
    kNothing,  // there is nothing to play
    kRefused,  // the weights forbid everything (their sum is negative)
    kItem,
};

struct Pick {
    Selection result = Selection::kNothing;
    PlayItem item;
    Relaxation relaxed = Relaxation::kNone;

    // The effects. Nothing: unchanged.
    std::optional<SelectionWeights> weights;  // as used in the draw
    std::optional<int32_t> savedRadioWeight;  // set by the first draw
    bool spendsRadioExclusion = false;
    std::optional<SongPosition> walk;  // the new place in order, without shuffle
    std::optional<int32_t> queued;     // its place in the queue
    std::optional<int32_t> station;    // the new current internet station
    std::optional<int32_t> selectionCalls;
    bool isReported = true;               // enters the history
    std::optional<size_t> historyCursor;  // of a replayed record
    int replayStep = 0;                   // direction of the replay, 1 or -1; 0: none
};

PlayItem MakeSongItem(const MusicLibrary& library, const SongChoice& place);
PlayItem MakeStationItem(const RadioState& radio, int32_t station);

void TakeEffect(AppState& app, const Pick& pick);

// The song that plays, or played last; null for anything else, and after a rescan that no longer finds it.
const Song* PlayingSong(const AppState& app);
Song* PlayingSong(AppState& app);

}  // namespace hullrider
