// Chooses the next song or station. Changes only `picker`: its generators and its lists. UI thread.
#pragma once

#include "playback/pick.h"
#include "playback/picker_state.h"
#include "playback/song_category.h"

namespace hullrider {

// Picks by the play mode, the weights, the favorites and the history. A category other than kNoCategory stands for that
// of the current playlist's first song, as in playlist mode.
//
// When no song passes, the rules are dropped in this order: the history (the song heard least recently is taken), the
// category, the filter or the playlist. Songs that have failed to play come last.
Pick SelectNextSong(const AppState& app, PickerState& picker, int32_t category);

// The same without stations.
Pick SelectSongOnly(const AppState& app, PickerState& picker);

// Draws by the weights of the active custom station instead of the user's.
Pick SelectForCustomStation(const AppState& app, PickerState& picker);

// A song drawn uniformly from the whole library, whatever its counters say and whether or not it can be played. Nothing
// when the library is empty.
Pick PickUniformSong(const AppState& app, PickerState& picker);

// How much there is of each category.
CategoryCounts CountsOf(const CandidateLists& lists, const RadioState& radio);

// Whether there is a song of that category, not radio.
bool LibraryHasCategory(const CandidateLists& lists, int32_t category);

}  // namespace hullrider
