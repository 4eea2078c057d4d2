// Chooses the next item: a request, the history when it is replayed, the queue, the active custom station, or the
// selection. Changes nothing. UI thread.
#pragma once

#include "playback/pick.h"
#include "playback/song_selection.h"

namespace hullrider {

// As SelectNextSong. When a request cannot be met, or the replayed history has no further song, the selection chooses.
// Only a request for an earlier song gets nothing when there is none.
Pick ChooseNextItem(const AppState& app, PickerState& picker, const NextRequest& request);

// Replaces an item that could not be played: by the next record in the same direction of the history, the next song of
// the queue, the custom station's next pick, the next internet station, or a new selection.
Pick ReplaceItem(const AppState& app, PickerState& picker, const Pick& failed);

// True when the history holds a song before the current one.
bool HasEarlierSong(const SongHistory& history);

}  // namespace hullrider
