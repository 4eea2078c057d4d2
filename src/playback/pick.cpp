#include "playback/pick.h"

#include <utility>

#include "library/song_history.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

void NoteInHistory(AppState& app, const Pick& pick) {
    const PlayItem& item = pick.item;
    if (pick.historyCursor) {
        app.history.cursor = *pick.historyCursor;
    } else if (pick.isReported) {
        ReportPick(app.history, {item.type, item.place.playlist, item.place.song, item.address, 0, 0.0, item.title});
    }
}

void MoveSelection(SelectionState& selection, const Pick& pick) {
    if (pick.savedRadioWeight) selection.savedRadioWeight = pick.savedRadioWeight;
    if (pick.spendsRadioExclusion) selection.excludeRadioOnce = false;
    if (pick.walk) {
        selection.currentPlaylist = pick.walk->playlist;
        selection.currentSongInPlaylist = pick.walk->song;
    }
    if (pick.queued) selection.nextQueued = *pick.queued + 1;
    if (pick.station) selection.currentInternetStation = *pick.station;
    if (pick.selectionCalls) selection.selectionCalls = *pick.selectionCalls;
    if (pick.replayStep != 0) selection.previousSongMode = true;
    selection.radioPlaying = pick.item.kind == PlayItem::Kind::kStation;
    selection.firstPick = false;
}

}  // namespace

PlayItem MakeSongItem(const MusicLibrary& library, const SongChoice& place) {
    const Playlist& playlist = library.playlists[static_cast<size_t>(place.playlist)];
    const Song& song = playlist.songs[static_cast<size_t>(place.song)];
    return {.kind = PlayItem::Kind::kSong,
            .type = song.musicType,
            .place = place,
            .address = song.songPath,
            .title = std::string(FileStem(song.songPath)),
            .secondLine = playlist.albumName};
}

PlayItem MakeStationItem(const RadioState& radio, int32_t station) {
    const InternetStation& wanted = radio.stations[static_cast<size_t>(station)];
    return {.kind = PlayItem::Kind::kStation,
            .type = kInternetRadio,
            .place = {station, 0, 0, 0},
            .address = wanted.url,
            .title = wanted.name,
            .secondLine = {},
            .hasLength = false,
            .canBePositioned = false};
}

void TakeEffect(AppState& app, const Pick& pick) {
    PlaybackState& playback = app.playback;
    playback.previousType = app.selection.firstPick ? pick.item.type : playback.currentType;
    playback.currentType = pick.item.type;
    playback.item = pick.item;
    playback.relaxed = pick.relaxed;
    if (pick.weights) app.weights = *pick.weights;
    MoveSelection(app.selection, pick);
    NoteInHistory(app, pick);
}

const Song* PlayingSong(const AppState& app) {
    const PlayItem& item = app.playback.item;
    if (item.kind != PlayItem::Kind::kSong) return nullptr;
    return FindSong(app.library, {item.place.playlist, item.place.song});
}

Song* PlayingSong(AppState& app) {
    return const_cast<Song*>(PlayingSong(std::as_const(app)));
}

}  // namespace hullrider
