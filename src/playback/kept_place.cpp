#include "playback/kept_place.h"

#include "library/music_type.h"
#include "library/song_counts.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

void FindPlayingSong(AppState& app) {
    PlaybackState& playback = app.playback;
    const SongHistory& history = app.history;
    if (playback.item.kind != PlayItem::Kind::kSong || history.cursor >= history.records.size()) return;
    const HistoryRecord& record = history.records[history.cursor];
    const bool isSame = record.path == playback.item.address;
    playback.item.place = {isSame ? record.playlist : -1, isSame ? record.song : -1, 0, 0};
}

}  // namespace

KeptPlace KeepPlace(const AppState& app) {
    const SelectionState& selection = app.selection;
    const Song* const first = FindSong(app.library, {selection.currentPlaylist, 0});
    if (first == nullptr) return {};
    const Song* const song = FindSong(app.library, {selection.currentPlaylist, selection.currentSongInPlaylist});
    return {ToLower(FolderOf(first->songPath)), song == nullptr ? std::string() : ToLower(song->songPath)};
}

void FindPlaceAgain(AppState& app, const KeptPlace& place) {
    FindPlayingSong(app);
    SelectionState& selection = app.selection;
    selection.currentPlaylist = 0;
    selection.currentSongInPlaylist = -1;
    if (place.albumFolder.empty()) return;
    for (size_t i = 0; i < app.library.playlists.size(); ++i) {
        const std::vector<Song>& songs = app.library.playlists[i].songs;
        if (app.library.playlists[i].isQueue || songs.empty()) continue;
        if (ToLower(FolderOf(songs.front().songPath)) != place.albumFolder) continue;
        selection.currentPlaylist = static_cast<int32_t>(i);
        for (size_t j = 0; j < songs.size(); ++j) {
            if (ToLower(songs[j].songPath) == place.songPath) selection.currentSongInPlaylist = static_cast<int32_t>(j);
        }
        return;
    }
}

}  // namespace hullrider
