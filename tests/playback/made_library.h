// Libraries that a test makes up.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "library/song_counts.h"
#include "state/app_state.h"

namespace hullrider {

inline Song MadeSong(std::string path, int32_t type, int32_t isFavorite = 0, int32_t favoriteCount = 0) {
    return {std::move(path), isFavorite, 0, favoriteCount, type};
}

// As the program does after every change of the library.
inline void Recount(AppState& app) {
    const Settings& settings = app.settings;
    app.weights = {settings.rawFav, settings.rawMIDI, settings.rawMP3, settings.rawTracker, settings.rawRadio};
    UpdateSongCounts(app.library, app.weights, static_cast<int32_t>(app.radio.stations.size()));
}

inline void SetLibrary(AppState& app, std::vector<std::vector<Song>> playlists) {
    app.library.playlists.clear();
    for (std::vector<Song>& songs : playlists) {
        Playlist playlist;
        playlist.albumName = "Album " + std::to_string(app.library.playlists.size());
        playlist.songs = std::move(songs);
        app.library.playlists.push_back(std::move(playlist));
    }
    Recount(app);
}

}  // namespace hullrider
