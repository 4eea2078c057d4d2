// Which song or station comes next. Changes nothing but the sources of chance in `draws` and the lists that it keeps
// there. UI thread.
#pragma once

#include "playback/pick.h"
#include "playback/picker_state.h"
#include "playback/song_category.h"

namespace hullrider {

// Picks by the play mode, the weights, the favorites and the history. A category but kNoCategory means: of the kind of
// the current playlist's first song, as in playlist mode.
//
// Where no song passes, the tests are given up in this order: the history (then comes the song that was heard least
// recently), the category, the filter or the playlist. Songs that have failed to play come after all others.
Pick SelectNextSong(const AppState& app, PickerState& picker, int32_t category);

// Draws by the weights of the active custom station instead of the user's.
Pick SelectForCustomStation(const AppState& app, PickerState& picker);

// One song drawn uniformly over the whole library as it stands, whatever its counters say and whether it can be played.
// Nothing when the library holds no song.
Pick PickUniformSong(const AppState& app, PickerState& picker);

// How much there is of each kind.
CategoryCounts CountsOf(const CandidateLists& lists, const RadioState& radio);

// Whether there is a song of that type, or for kFavoritesCategory a favorite.
bool LibraryHasCategory(const CandidateLists& lists, int32_t category);

}  // namespace hullrider
