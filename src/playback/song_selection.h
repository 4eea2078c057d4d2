// Which song comes next. UI thread.
#pragma once

#include "playback/random.h"
#include "state/music_library.h"
#include "state/playback_state.h"

namespace hullrider {

// One song drawn uniformly over the whole library as it stands, whatever its counters say. False, with all zeros, when
// the library holds no song. Does not look whether the file exists.
bool PickUniformSong(const MusicLibrary& library, Random& random, SongChoice& choice);

// Draws until a song's file exists. False when none was met in a bounded number of draws: a library whose files are
// all gone must not hold up the caller.
bool SelectNextSong(const MusicLibrary& library, Random& random, SongChoice& choice);

}  // namespace hullrider
