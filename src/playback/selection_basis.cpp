#include "playback/selection_basis.h"

#include "playback/stream_slots.h"

namespace hullrider {

SelectionBasis BasisOf(const AppState& app) {
    const SelectionState& selection = app.selection;
    const Settings& settings = app.settings;
    return {
        .playMode = selection.playMode,
        .favoritesFilter = selection.favoritesFilter,
        .playlist = selection.currentPlaylist,
        .song = selection.currentSongInPlaylist,
        .customStation = selection.currentCustomStation,
        .internetStation = selection.currentInternetStation,
        .nextQueued = selection.nextQueued,
        .shuffle = selection.shuffle,
        .radioPlaying = selection.radioPlaying,
        .customStationActive = selection.customStationActive,
        .stationPreview = selection.stationPreview,
        .excludeRadioOnce = selection.excludeRadioOnce,
        .mixedMusic = selection.mixedMusic,
        .previousSongMode = selection.previousSongMode,
        .picks = app.history.picks,
        .historyCursor = app.history.cursor,
        .libraryRevision = app.library.revision,
        .stationCount = app.radio.stations.size(),
        .historyDepth = settings.historyDepth,
        .weights = app.weights,
        .customWeights = app.radio.activeCustomStation.weights,
        .minSec = settings.songPlayDurationMin,
        .maxSec = settings.songPlayDurationMax,
        .stationMinSec = settings.iSongPlayDurationMin,
        .stationMaxSec = settings.iSongPlayDurationMax,
        .fadeMs = settings.FADE_DURATION_MS,
        .demonstration = app.playback.demonstration,
        .slotFont = IdleSlotFont(app.playback, app.soundFonts),
        .songsBeforeFont = settings.songsBeforeSoundfontChange,
    };
}

}  // namespace hullrider
