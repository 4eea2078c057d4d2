#include "playback/queue.h"

namespace hullrider {

std::optional<int32_t> QueueIn(const MusicLibrary& library) {
    if (library.playlists.empty() || !library.playlists.back().isQueue) return std::nullopt;
    return static_cast<int32_t>(library.playlists.size()) - 1;
}

int32_t AlbumCountOf(const MusicLibrary& library) {
    return QueueIn(library).value_or(static_cast<int32_t>(library.playlists.size()));
}

bool HasQueuedSong(const AppState& app) {
    const std::optional<int32_t>& next = app.selection.nextQueued;
    return next && QueueIn(app.library) && static_cast<size_t>(*next) < app.library.playlists.back().songs.size();
}

bool IsQueuedSongPlaying(const AppState& app) {
    const PlayItem& item = app.playback.item;
    return item.kind == PlayItem::Kind::kSong && QueueIn(app.library) == item.place.playlist;
}

}  // namespace hullrider
