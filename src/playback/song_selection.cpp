#include "playback/song_selection.h"

#include <algorithm>

#include "library/music_type.h"
#include "library/song_counts.h"
#include "library/song_history.h"
#include "playback/candidates.h"
#include "playback/chosen_song.h"
#include "playback/song_category.h"
#include "playback/song_files.h"

namespace hullrider {

namespace {

constexpr int32_t kMostCalls = 10000;

Playlist* CurrentPlaylist(AppState& app) {
    const int32_t index = app.selection.currentPlaylist;
    if (index < 0 || static_cast<size_t>(index) >= app.library.playlists.size()) return nullptr;
    return &app.library.playlists[static_cast<size_t>(index)];
}

Selection Accept(AppState& app, const SongChoice& chosen, int32_t type, SongChoice& choice) {
    NoteType(app.playback, app.selection, type);
    ReportPick(app.history, {type, chosen.playlist, chosen.song, SongOf(app, chosen).songPath, 0, 0.0});
    choice = chosen;
    return Selection::kSong;
}

Selection AcceptSong(AppState& app, const SongChoice& chosen, SongChoice& choice) {
    app.selection.radioPlaying = false;
    return Accept(app, chosen, SongOf(app, chosen).musicType, choice);
}

Selection AcceptStation(AppState& app, SongChoice& choice) {
    SelectionState& selection = app.selection;
    const int32_t station = selection.currentInternetStation;
    selection.radioPlaying = true;
    NoteType(app.playback, selection, kInternetRadio);
    const bool known = station >= 0 && static_cast<size_t>(station) < app.radio.stations.size();
    if (!selection.stationPreview) {
        const std::string url = known ? app.radio.stations[static_cast<size_t>(station)].url : "";
        ReportPick(app.history, {kInternetRadio, station, 0, url, 0, 0.0});
    }
    choice = {station, 0, 0, 0};
    return Selection::kStation;
}

// A song of a playlist that stands for internet radio.
Selection SelectFromRadioPlaylist(AppState& app, Draws& draws, int32_t index, SongChoice& choice) {
    const std::vector<Song>& songs = app.library.playlists[static_cast<size_t>(index)].songs;
    if (songs.empty()) return Selection::kNothing;
    const SongChoice drawn{index, static_cast<int32_t>(draws.song.Index(songs.size())), 0, 0};
    if (!draws.fileExists(SongOf(app, drawn).songPath)) return SelectNextSong(app, draws, kRadioCategory, choice);
    app.selection.radioPlaying = false;
    return Accept(app, drawn, SongOf(app, drawn).musicType, choice);
}

// One after the other, through all playlists and round again.
Selection WalkOn(AppState& app, Draws& draws, SongChoice& choice) {
    SelectionState& selection = app.selection;
    const std::vector<Playlist>& playlists = app.library.playlists;
    SongFiles files(draws);
    for (int64_t left = SongCountOf(app.library); left > 0;) {
        const Playlist* const current = CurrentPlaylist(app);
        if (current == nullptr) selection.currentPlaylist = 0;
        ++selection.currentSongInPlaylist;
        if (current == nullptr || selection.currentSongInPlaylist < 0) {
            selection.currentSongInPlaylist = 0;
        } else if (static_cast<size_t>(selection.currentSongInPlaylist) >= current->songs.size()) {
            const bool isLast = static_cast<size_t>(selection.currentPlaylist) + 1 >= playlists.size();
            selection.currentPlaylist = isLast ? 0 : selection.currentPlaylist + 1;
            selection.currentSongInPlaylist = 0;
        }
        if (CurrentPlaylist(app)->songs.empty()) continue;
        const SongChoice next{selection.currentPlaylist, selection.currentSongInPlaylist, 0, 0};
        if (files.Exists(SongOf(app, next).songPath)) return AcceptSong(app, next, choice);
        --left;
    }
    return Selection::kNothing;
}

// Every song of the library or of one playlist, each once.
WeightedSongs EverySong(const MusicLibrary& library, const Playlist* only) {
    WeightedSongs list;
    for (size_t i = 0; i < library.playlists.size(); ++i) {
        if (only != nullptr && only != &library.playlists[i]) continue;
        for (size_t j = 0; j < library.playlists[i].songs.size(); ++j) {
            Append(list, {static_cast<int32_t>(i), static_cast<int32_t>(j), 0, 0}, 1);
        }
    }
    return list;
}

bool FailedNow(const SelectionState& selection, const SongChoice& at) {
    const auto isSame = [&](const SongChoice& failed) {
        return failed.playlist == at.playlist && failed.song == at.song;
    };
    return std::any_of(selection.failedNow.begin(), selection.failedNow.end(), isSame);
}

bool CanBePlayed(const AppState& app, const SongChoice& at, SongFiles& files) {
    return !FailedNow(app.selection, at) && files.Exists(SongOf(app, at).songPath);
}

Selection SelectUniformlyFromWhatIsThere(AppState& app, Draws& draws, SongFiles& files, SongChoice& choice) {
    files.RenewPatience();
    const auto passes = [&](const SongChoice& at) { return CanBePlayed(app, at, files); };
    const std::optional<SongChoice> drawn = DrawPassing(EverySong(app.library, nullptr), draws.song, passes);
    return drawn ? AcceptSong(app, *drawn, choice) : Selection::kNothing;
}

Selection ShufflePlaylist(AppState& app, Draws& draws, SongChoice& choice) {
    const Playlist* const playlist = CurrentPlaylist(app);
    const WeightedSongs songs = playlist == nullptr ? WeightedSongs{} : EverySong(app.library, playlist);
    app.selection.lastCandidateCount = static_cast<int32_t>(songs.songs.size());
    if (IsEmpty(songs)) return Selection::kNothing;
    SongFiles files(draws);
    const auto passes = [&](const SongChoice& at) { return CanBePlayed(app, at, files); };
    const std::optional<SongChoice> drawn = DrawPassing(songs, draws.song, passes);
    if (drawn) return AcceptSong(app, *drawn, choice);
    return SelectUniformlyFromWhatIsThere(app, draws, files, choice);
}

Selection ShuffleLibrary(AppState& app, Draws& draws, int32_t category, SongChoice& choice) {
    SelectionState& selection = app.selection;
    const CandidateLists& lists = BuildWeightedSongList(app.library, selection);
    if (lists.weightOfAll == 0) return Selection::kNothing;
    if (!LibraryHasCategory(lists, category) || selection.selectionCalls >= kMostCalls) {
        selection.selectionCalls = 0;
        return PickUniformSong(app, draws, choice) ? Selection::kSong : Selection::kNothing;
    }
    SongFiles files(draws);
    const auto passes = [&](const SongChoice& at) {
        const Song& song = SongOf(app, at);
        return !WasPickedLately(app.history, song.musicType, at.playlist, at.song, app.settings.historyDepth) &&
               CanBePlayed(app, at, files);
    };
    const std::optional<SongChoice> drawn =
        DrawPassing(lists.byCategory[static_cast<size_t>(category)], draws.song, passes);
    if (drawn) return AcceptSong(app, *drawn, choice);
    return SelectUniformlyFromWhatIsThere(app, draws, files, choice);
}

bool WantsRadio(const AppState& app, int32_t category) {
    const SelectionState& selection = app.selection;
    return (selection.playMode != kPlaylistMode && category == kRadioCategory) ||
           (selection.radioPlaying && !app.radio.stations.empty()) || selection.stationPreview;
}

Selection SelectRadio(AppState& app, Draws& draws, int32_t category, SongChoice& choice) {
    SelectionState& selection = app.selection;
    if (selection.playMode == kStationMode || selection.stationPreview) return AcceptStation(app, choice);
    const WeightedSongs stations = BuildStationList(app.radio, app.library);
    if (IsEmpty(stations)) return ShuffleLibrary(app, draws, category, choice);
    const int32_t drawn = DrawSong(stations, draws.song).playlist;
    selection.currentInternetStation = drawn;
    const auto stationCount = static_cast<int32_t>(app.radio.stations.size());
    if (drawn < stationCount) return AcceptStation(app, choice);
    return SelectFromRadioPlaylist(app, draws, drawn - stationCount, choice);
}

// The kind of the current playlist, which is that of its first song.
int32_t CategoryOfPlaylist(AppState& app) {
    const Playlist* const playlist = CurrentPlaylist(app);
    if (playlist == nullptr || playlist->songs.empty()) return kNoCategory;
    return MusicTypeOf(playlist->songs.front().songPath);
}

Selection SelectFrom(AppState& app, Draws& draws, int32_t category, SongChoice& choice) {
    if (WantsRadio(app, category)) return SelectRadio(app, draws, category, choice);
    app.selection.radioPlaying = false;
    if (!app.selection.shuffle) return WalkOn(app, draws, choice);
    if (app.selection.playMode == kPlaylistMode) return ShufflePlaylist(app, draws, choice);
    return ShuffleLibrary(app, draws, category, choice);
}

}  // namespace

CategoryCounts CountsOf(const CandidateLists& lists, const RadioState& radio) {
    return {lists.songsOf[kMidiCategory], lists.songsOf[kMp3Category], lists.songsOf[kTrackerCategory],
            static_cast<int32_t>(radio.stations.size())};
}

bool LibraryHasCategory(const CandidateLists& lists, int32_t category) {
    return category >= kMidiCategory && category <= kFavoritesCategory &&
           lists.songsOf[static_cast<size_t>(category)] > 0;
}

void NoteType(PlaybackState& playback, SelectionState& selection, int32_t type) {
    playback.previousType = selection.firstPick ? type : playback.currentType;
    playback.currentType = type;
    selection.firstPick = false;
}

Selection SelectNextSong(AppState& app, Draws& draws, int32_t category, SongChoice& choice) {
    SelectionState& selection = app.selection;
    choice = {};
    if (app.radio.stations.empty()) app.weights.radio = 0;
    if (category != kNoCategory || selection.playMode == kPlaylistMode) {
        category = CategoryOfPlaylist(app);
    } else {
        selection.selectionCalls = 0;
        const CategoryCounts counts = CountsOf(BuildWeightedSongList(app.library, selection), app.radio);
        category = PickCategory(app.weights, selection, counts, draws.category);
        if (category == kNoCategory) return Selection::kRefused;
        if (selection.playMode != kStationMode) selection.radioPlaying = false;
    }
    selection.selectionCalls = std::min(selection.selectionCalls + 1, kMostCalls);
    return SelectFrom(app, draws, category, choice);
}

bool PickUniformSong(AppState& app, Draws& draws, SongChoice& choice) {
    choice = {};
    const int64_t count = SongCountOf(app.library);
    if (count == 0) return false;
    const auto drawn = static_cast<int64_t>(draws.song.Index(static_cast<uint64_t>(count)));
    const std::optional<SongPosition> at = SongAt(app.library, drawn);
    if (!at) return false;
    AcceptSong(app, {at->playlist, at->song, static_cast<int32_t>(drawn), 0}, choice);
    return true;
}

Selection SelectForCustomStation(AppState& app, Draws& draws, SongChoice& choice) {
    const SelectionWeights own = app.weights;
    app.weights = app.radio.activeCustomStation.weights;
    const Selection selected = SelectNextSong(app, draws, kNoCategory, choice);
    app.weights = own;
    return selected;
}

}  // namespace hullrider
