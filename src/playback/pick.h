// What was picked to come next. A pick is not yet a fact: what it moves takes effect when the item starts, so that one
// that is dropped, or cannot be played, has left nothing behind. UI thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "library/song_counts.h"
#include "state/app_state.h"

namespace hullrider {

enum class Selection {
    kNothing,  // there is nothing that may be played
    kRefused,  // the weights say that nothing is to be played
    kItem,
};

struct Pick {
    Selection result = Selection::kNothing;
    PlayItem item;
    Relaxation relaxed = Relaxation::kNone;

    // What takes effect with it. Nothing here: it stays as it is.
    std::optional<SelectionWeights> weights;  // as they were drawn from
    std::optional<int32_t> savedRadioWeight;  // with the first draw
    bool spendsRadioExclusion = false;
    std::optional<SongPosition> walk;  // where the walk without shuffle stands then
    std::optional<int32_t> station;    // which internet station is current then
    std::optional<int32_t> selectionCalls;
    bool isReported = true;               // to the history
    std::optional<size_t> historyCursor;  // it is played again: the record that plays then
    int replayStep = 0;                   // and the way through the history, 1 or -1
};

PlayItem MakeSongItem(const MusicLibrary& library, const SongChoice& place);
PlayItem MakeStationItem(const RadioState& radio, int32_t station);

void TakeEffect(AppState& app, const Pick& pick);

// The song that plays, or played last; null for anything else, and when a rescan has taken its place away.
const Song* PlayingSong(const AppState& app);
Song* PlayingSong(AppState& app);

}  // namespace hullrider
