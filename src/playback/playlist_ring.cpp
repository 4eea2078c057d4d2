#include "playback/playlist_ring.h"

#include <algorithm>

#include "playback/queue.h"

namespace hullrider {

namespace {

int32_t CountOf(const auto& list) {
    return static_cast<int32_t>(list.size());
}

bool EnterCustomStation(AppState& app, int32_t index) {
    SelectionState& selection = app.selection;
    const bool noneExists = app.radio.customStations.empty();
    if (index < 0 || index >= std::max(CountOf(app.radio.customStations), 1)) return false;
    selection.playMode = kLibraryMode;
    selection.currentCustomStation = index;
    selection.customStationActive = !noneExists;
    selection.radioPlaying = false;
    if (!noneExists) app.radio.activeCustomStation = app.radio.customStations[static_cast<size_t>(index)];
    return true;
}

bool EnterStation(AppState& app, int32_t index) {
    SelectionState& selection = app.selection;
    if (index < 0 || index >= CountOf(app.radio.stations)) return false;
    selection.playMode = kStationMode;
    selection.currentInternetStation = index;
    selection.radioPlaying = true;
    selection.customStationActive = false;
    return true;
}

}  // namespace

bool EnterPlaylist(AppState& app, int32_t index) {
    SelectionState& selection = app.selection;
    if (index < 0 || index >= CountOf(app.library.playlists)) return false;
    if (app.library.playlists[static_cast<size_t>(index)].isQueue) return false;
    selection.playMode = kPlaylistMode;
    selection.currentPlaylist = index;
    selection.currentSongInPlaylist = -1;
    selection.radioPlaying = selection.customStationActive = false;
    return true;
}

void StepPlaylistForward(AppState& app) {
    const SelectionState& selection = app.selection;
    if (selection.playMode == kPlaylistMode) {
        if (!EnterPlaylist(app, selection.currentPlaylist + 1)) EnterCustomStation(app, 0);
        return;
    }
    if (selection.playMode == kStationMode) {
        if (!EnterStation(app, selection.currentInternetStation + 1) && !EnterPlaylist(app, 0)) {
            EnterCustomStation(app, 0);
        }
        return;
    }
    if (EnterCustomStation(app, selection.currentCustomStation + 1) || EnterStation(app, 0)) return;
    if (!EnterPlaylist(app, 0)) EnterCustomStation(app, 0);
}

void StepPlaylistBack(AppState& app) {
    const SelectionState& selection = app.selection;
    const int32_t lastCustomStation = std::max(CountOf(app.radio.customStations), 1) - 1;
    const int32_t lastStation = CountOf(app.radio.stations) - 1;
    if (selection.playMode == kPlaylistMode) {
        if (EnterPlaylist(app, selection.currentPlaylist - 1) || EnterStation(app, lastStation)) return;
        EnterCustomStation(app, lastCustomStation);
        return;
    }
    if (selection.playMode == kStationMode) {
        if (!EnterStation(app, selection.currentInternetStation - 1)) EnterCustomStation(app, lastCustomStation);
        return;
    }
    if (EnterCustomStation(app, selection.currentCustomStation - 1)) return;
    if (!EnterPlaylist(app, AlbumCountOf(app.library) - 1) && !EnterStation(app, lastStation)) {
        EnterCustomStation(app, lastCustomStation);
    }
}

}  // namespace hullrider
