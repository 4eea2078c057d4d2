// Which song or station comes next. UI thread.
#pragma once

#include "playback/draws.h"
#include "playback/song_category.h"
#include "state/app_state.h"

namespace hullrider {

enum class Selection {
    kNothing,  // there is nothing, or nothing whose file is there: the choice is all zeros
    kRefused,  // the weights say that nothing is to be played
    kSong,
    kStation,
};

// Picks by the play mode, the weights, the favourites and the history, and reports the pick to the history and to
// `currentType` and `previousType`. A category but kNoCategory means: of the kind of the current playlist's first song,
// as in playlist mode.
//
// Where no song of the category passes (all are in the history, or their files are gone), one is drawn uniformly from
// those of the whole library whose files are there, so that the search always ends.
Selection SelectNextSong(AppState& app, Draws& draws, int32_t category, SongChoice& choice);

// One song drawn uniformly over the whole library as it stands, whatever its counters say; reported as above. False,
// with all zeros, when the library holds no song. Does not look whether the file exists.
bool PickUniformSong(AppState& app, Draws& draws, SongChoice& choice);

// How much there is of each kind.
CategoryCounts CountsOf(const CandidateLists& lists, const RadioState& radio);

// Whether there is a song of that type, or for kFavoritesCategory a favourite.
bool LibraryHasCategory(const CandidateLists& lists, int32_t category);

// Draws by the weights of the active custom station instead of the user's.
Selection SelectForCustomStation(AppState& app, Draws& draws, SongChoice& choice);

// Notes what was chosen as what plays, without a report to the history.
void NoteType(PlaybackState& playback, SelectionState& selection, int32_t type);

}  // namespace hullrider
