#include "playback/selection_commands.h"

#include "playback/pick.h"
#include "playback/queue.h"
#include "playback/transport.h"

namespace hullrider {

namespace {

void WalkOnFromPlayingSong(AppState& app) {
    SelectionState& selection = app.selection;
    const SongChoice& place = app.playback.item.place;
    if (PlayingSong(app) == nullptr || IsQueuedSongPlaying(app)) return;
    if (selection.playMode == kPlaylistMode && place.playlist != selection.currentPlaylist) return;
    selection.currentPlaylist = place.playlist;
    selection.currentSongInPlaylist = place.song;
}

}  // namespace

void ToggleShuffle(AppState& app) {
    app.selection.shuffle = !app.selection.shuffle;
    if (!app.selection.shuffle) WalkOnFromPlayingSong(app);
}

void CycleFavoritesFilter(SelectionState& selection) {
    selection.favoritesFilter = (selection.favoritesFilter + 1) % 3;
    selection.playMode = selection.favoritesFilter + 1;
}

void ReturnToLibrary(SelectionState& selection) {
    selection.playMode = kLibraryMode;
    selection.nextQueued.reset();
    selection.radioPlaying = selection.customStationActive = selection.previousSongMode = false;
}

bool StepStation(AppState& app, PickerState& picker, int32_t step) {
    const auto count = static_cast<int32_t>(app.radio.stations.size());
    if (count == 0) return false;
    SelectionState& selection = app.selection;
    selection.currentInternetStation = ((selection.currentInternetStation + step) % count + count) % count;
    selection.playMode = kStationMode;
    selection.customStationActive = false;
    selection.nextQueued.reset();
    return PlayStation(app, picker);
}

}  // namespace hullrider
