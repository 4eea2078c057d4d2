#include "playback/next_item.h"

#include <algorithm>

#include "library/song_history.h"
#include "playback/chosen_song.h"

namespace hullrider {

namespace {

Selection SelectFreely(AppState& app, Draws& draws, SongChoice& choice) {
    if (app.selection.customStationActive) return SelectForCustomStation(app, draws, choice);
    return SelectNextSong(app, draws, kNoCategory, choice);
}

Selection TakeStation(AppState& app, SongChoice& choice) {
    SelectionState& selection = app.selection;
    const auto station = static_cast<size_t>(selection.currentInternetStation);
    if (selection.currentInternetStation < 0 || station >= app.radio.stations.size()) return Selection::kNothing;
    selection.radioPlaying = true;
    NoteType(app.playback, selection, kInternetRadio);
    ReportPick(app.history,
               {kInternetRadio, selection.currentInternetStation, 0, app.radio.stations[station].url, 0, 0.0});
    choice = {selection.currentInternetStation, 0, 0, 0};
    return Selection::kStation;
}

Selection TakeSong(AppState& app, const SongChoice& wanted, SongChoice& choice) {
    if (FindSong(app.library, PositionOf(wanted)) == nullptr) return Selection::kNothing;
    const Song& song = SongOf(app, wanted);
    app.selection.radioPlaying = false;
    NoteType(app.playback, app.selection, song.musicType);
    ReportPick(app.history, {song.musicType, wanted.playlist, wanted.song, song.songPath, 0, 0.0});
    choice = {wanted.playlist, wanted.song, 0, 0};
    return Selection::kSong;
}

// What the record stands for, if it can still be played.
Selection TakeRecord(AppState& app, const Draws& draws, const HistoryRecord& record, SongChoice& choice) {
    if (record.type == kInternetRadio) {
        const std::vector<InternetStation>& stations = app.radio.stations;
        const auto found = std::find_if(stations.begin(), stations.end(),
                                        [&](const InternetStation& station) { return station.url == record.path; });
        if (found == stations.end()) return Selection::kNothing;
        choice = {static_cast<int32_t>(found - stations.begin()), 0, 0, 0};
        app.selection.currentInternetStation = choice.playlist;
    } else {
        choice = {record.playlist, record.song, 0, 0};
        const Song* const song = FindSong(app.library, PositionOf(choice));
        if (song == nullptr || !draws.fileExists(song->songPath)) return Selection::kNothing;
    }
    app.selection.radioPlaying = record.type == kInternetRadio;
    // As it is loaded, whatever the file of the history says.
    const int32_t type = app.selection.radioPlaying ? kInternetRadio : SongOf(app, choice).musicType;
    NoteType(app.playback, app.selection, type);
    return app.selection.radioPlaying ? Selection::kStation : Selection::kSong;
}

// Moves the cursor by `step`, 1 or -1, to the next record that can be played.
Selection ReplayHistory(AppState& app, const Draws& draws, int step, SongChoice& choice) {
    SongHistory& history = app.history;
    for (int64_t at = static_cast<int64_t>(history.cursor) + step;
         at >= 0 && at < static_cast<int64_t>(history.records.size()); at += step) {
        const Selection taken = TakeRecord(app, draws, history.records[static_cast<size_t>(at)], choice);
        if (taken == Selection::kNothing) continue;
        history.cursor = static_cast<size_t>(at);
        return taken;
    }
    choice = {};
    return Selection::kNothing;
}

}  // namespace

bool HasEarlierSong(const SongHistory& history) {
    return history.cursor > 0;
}

Selection ChooseNextItem(AppState& app, Draws& draws, SongChoice& choice) {
    SelectionState& selection = app.selection;
    Selection chosen = Selection::kNothing;
    switch (app.playback.request.kind) {
        case NextRequest::kStation:
            chosen = TakeStation(app, choice);
            break;
        case NextRequest::kSong:
            chosen = TakeSong(app, app.playback.request.song, choice);
            break;
        case NextRequest::kEarlierSong:
            selection.previousSongMode = true;
            return ReplayHistory(app, draws, -1, choice);
        case NextRequest::kNone:
            if (selection.previousSongMode) chosen = ReplayHistory(app, draws, 1, choice);
            break;
    }
    if (chosen != Selection::kNothing) return chosen;
    return SelectFreely(app, draws, choice);
}

Selection ReplaceItem(AppState& app, Draws& draws, Selection failed, SongChoice& choice) {
    SelectionState& selection = app.selection;
    if (!selection.customStationActive && failed == Selection::kStation) {
        ++selection.currentInternetStation;
        if (static_cast<size_t>(selection.currentInternetStation) >= app.radio.stations.size()) {
            selection.currentInternetStation = 0;
        }
        return TakeStation(app, choice);
    }
    return SelectFreely(app, draws, choice);
}

}  // namespace hullrider
