// The songs that choices stand for, in the library as it is. UI thread.
#pragma once

#include <utility>

#include "library/song_counts.h"
#include "state/app_state.h"

namespace hullrider {

inline SongPosition PositionOf(const SongChoice& choice) {
    return {choice.playlist, choice.song};
}

// Of a choice that is known to be a song of the library.
inline const Song& SongOf(const AppState& app, const SongChoice& choice) {
    return app.library.playlists[static_cast<size_t>(choice.playlist)].songs[static_cast<size_t>(choice.song)];
}

// The song that plays, or played last; null for a station, and when a rescan has taken its place away.
inline const Song* PlayingSong(const AppState& app) {
    return app.playback.currentType == kInternetRadio ? nullptr
                                                      : FindSong(app.library, PositionOf(app.playback.playing));
}
inline Song* PlayingSong(AppState& app) {
    return const_cast<Song*>(PlayingSong(std::as_const(app)));
}

}  // namespace hullrider
