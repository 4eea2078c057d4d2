#include "app/current_favorite.h"

#include <algorithm>
#include <utility>

#include "app/library_loading.h"
#include "library/favorites.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

bool StationPlays(const AppState& state) {
    return state.playback.currentType == kInternetRadio && state.playback.playing.playlist >= 0 &&
           std::cmp_less(state.playback.playing.playlist, state.radio.stations.size());
}

// Where the song that plays lies in the library; nothing when none does.
std::optional<SongPosition> PlayingSong(const AppState& state) {
    const SongChoice& playing = state.playback.playing;
    const std::vector<Playlist>& playlists = state.library.playlists;
    if (state.playback.currentType == kInternetRadio || CurrentHandle(state.playback) == 0) return std::nullopt;
    if (playing.playlist < 0 || std::cmp_greater_equal(playing.playlist, playlists.size())) return std::nullopt;
    const std::vector<Song>& songs = playlists[static_cast<size_t>(playing.playlist)].songs;
    if (playing.song < 0 || std::cmp_greater_equal(playing.song, songs.size())) return std::nullopt;
    return SongPosition{playing.playlist, playing.song};
}

}  // namespace

std::optional<int32_t> CurrentFavoriteCount(const AppState& state) {
    if (StationPlays(state))
        return state.radio.stations[static_cast<size_t>(state.playback.playing.playlist)].favoriteCount;
    const std::optional<SongPosition> at = PlayingSong(state);
    if (!at) return std::nullopt;
    return state.library.playlists[static_cast<size_t>(at->playlist)]
        .songs[static_cast<size_t>(at->song)]
        .favoriteCount;
}

void SetCurrentFavoriteCount(AppState& state, int64_t count) {
    const auto cut = static_cast<int32_t>(std::clamp<int64_t>(count, INT32_MIN, INT32_MAX));
    if (StationPlays(state)) {
        InternetStation& station = state.radio.stations[static_cast<size_t>(state.playback.playing.playlist)];
        station.favoriteCount = cut;
        station.favorite = cut > 0 ? 1 : 0;
    } else if (const std::optional<SongPosition> at = PlayingSong(state)) {
        SetFavoriteCount(state.favorites, state.library, *at, cut);
        RecountSongs(state);
    }
}

}  // namespace hullrider
