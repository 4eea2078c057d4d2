#include "app/current_favorite.h"

#include <algorithm>
#include <utility>

#include "app/library_loading.h"
#include "library/favorites.h"
#include "playback/chosen_song.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

bool StationPlays(const AppState& state) {
    return state.playback.currentType == kInternetRadio && state.playback.playing.playlist >= 0 &&
           std::cmp_less(state.playback.playing.playlist, state.radio.stations.size());
}

const Song* HeardSong(const AppState& state) {
    return CurrentHandle(state.playback) == 0 ? nullptr : PlayingSong(state);
}

}  // namespace

std::optional<int32_t> CurrentFavoriteCount(const AppState& state) {
    if (StationPlays(state)) {
        return state.radio.stations[static_cast<size_t>(state.playback.playing.playlist)].favoriteCount;
    }
    const Song* const song = HeardSong(state);
    if (song == nullptr) return std::nullopt;
    return song->favoriteCount;
}

void SetCurrentFavoriteCount(AppState& state, int64_t count) {
    const auto cut = static_cast<int32_t>(std::clamp<int64_t>(count, INT32_MIN, INT32_MAX));
    if (StationPlays(state)) {
        InternetStation& station = state.radio.stations[static_cast<size_t>(state.playback.playing.playlist)];
        station.favoriteCount = cut;
        station.favorite = cut > 0 ? 1 : 0;
    } else if (HeardSong(state) != nullptr) {
        SetFavoriteCount(state.favorites, state.library, PositionOf(state.playback.playing), cut);
        RecountSongs(state);
    }
}

}  // namespace hullrider
