// Where play-next gets its item from: what was asked for, the history that is played again, the active custom station,
// or the selection. UI thread.
#pragma once

#include "playback/song_selection.h"

namespace hullrider {

// As SelectNextSong. A request that cannot be fulfilled, and a history without another song that is there, give way to
// the selection; but kNothing answers a request for an earlier song when there is none.
Selection ChooseNextItem(AppState& app, Draws& draws, SongChoice& choice);

// What takes the place of an item that could not be loaded: the custom station's next pick, the next internet station,
// or a new selection.
Selection ReplaceItem(AppState& app, Draws& draws, Selection failed, SongChoice& choice);

// True when an earlier song than the one that plays is in the history.
bool HasEarlierSong(const SongHistory& history);

}  // namespace hullrider
