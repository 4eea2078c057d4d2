// Where play-next gets its item from: what was asked for, the history that is played again, the active custom station,
// or the selection. Changes nothing. UI thread.
#pragma once

#include "playback/pick.h"
#include "playback/song_selection.h"

namespace hullrider {

// As SelectNextSong. A request that cannot be fulfilled, and a history without another song, give way to the selection;
// but nothing answers a request for an earlier song when there is none.
Pick ChooseNextItem(const AppState& app, PickerState& picker, const NextRequest& request);

// What takes the place of an item that could not be played: the next record the same way along the history, the custom
// station's next pick, the next internet station, or a new selection.
Pick ReplaceItem(const AppState& app, PickerState& picker, const Pick& failed);

// True when an earlier song than the one that plays is in the history.
bool HasEarlierSong(const SongHistory& history);

}  // namespace hullrider
