#include "app/current_favorite.h"

#include <algorithm>
#include <utility>

#include "app/library_loading.h"
#include "library/favorites.h"
#include "playback/pick.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

// The place of the station that plays in its list; nothing when no station plays, or it has left the list.
std::optional<size_t> PlayingStation(const AppState& state) {
    const PlayItem& item = state.playback.item;
    const bool isListed = item.kind == PlayItem::Kind::kStation && item.place.playlist >= 0 &&
                          std::cmp_less(item.place.playlist, state.radio.stations.size());
    if (!isListed) return std::nullopt;
    return static_cast<size_t>(item.place.playlist);
}

const Song* HeardSong(const AppState& state) {
    return CurrentHandle(state.playback) == 0 ? nullptr : PlayingSong(state);
}

}  // namespace

std::optional<int32_t> CurrentFavoriteCount(const AppState& state) {
    if (const auto station = PlayingStation(state)) return state.radio.stations[*station].favoriteCount;
    const Song* const song = HeardSong(state);
    if (song == nullptr) return std::nullopt;
    return song->favoriteCount;
}

void SetCurrentFavoriteCount(AppState& state, int64_t count) {
    const auto cut = static_cast<int32_t>(std::clamp<int64_t>(count, INT32_MIN, INT32_MAX));
    if (const auto station = PlayingStation(state)) {
        state.radio.stations[*station].favoriteCount = cut;
        state.radio.stations[*station].favorite = cut > 0 ? 1 : 0;
    } else if (HeardSong(state) != nullptr) {
        const SongChoice& place = state.playback.item.place;
        SetFavoriteCount(state.favorites, state.library, {place.playlist, place.song}, cut);
        RecountSongs(state);
    }
}

}  // namespace hullrider
