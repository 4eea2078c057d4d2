#include "app/current_favorite.h"

#include <algorithm>
#include <utility>

#include "app/library_loading.h"
#include "library/favorites.h"
#include "playback/pick.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

// The index of the station that plays; empty when none plays or it has been removed from the list.
std::optional<size_t> PlayingStation(const AppState& app) {
    const PlayItem& item = app.playback.item;
    const bool isListed = item.kind == PlayItem::Kind::kStation && item.place.playlist >= 0 &&
                          std::cmp_less(item.place.playlist, app.radio.stations.size());
    if (!isListed) return std::nullopt;
    return static_cast<size_t>(item.place.playlist);
}

const Song* HeardSong(const AppState& app) {
    return CurrentHandle(app.playback) == 0 ? nullptr : PlayingSong(app);
}

}  // namespace

std::optional<int32_t> CurrentFavoriteCount(const AppState& app) {
    if (const auto station = PlayingStation(app)) return app.radio.stations[*station].favoriteCount;
    const Song* const song = HeardSong(app);
    if (song == nullptr) return std::nullopt;
    return song->favoriteCount;
}

void SetCurrentFavoriteCount(AppState& app, int64_t count) {
    const auto cut = static_cast<int32_t>(std::clamp<int64_t>(count, INT32_MIN, INT32_MAX));
    if (const auto station = PlayingStation(app)) {
        app.radio.stations[*station].favoriteCount = cut;
        app.radio.stations[*station].favorite = cut > 0 ? 1 : 0;
        ++app.radio.revision;
    } else if (HeardSong(app) != nullptr) {
        const SongChoice& place = app.playback.item.place;
        SetFavoriteCount(app.favorites, app.library, {place.playlist, place.song}, cut);
        RecountSongs(app);
    }
}

}  // namespace hullrider
