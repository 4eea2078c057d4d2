#include "playback/song_selection.h"

#include <algorithm>
#include <utility>

#include "library/music_type.h"
#include "library/song_counts.h"
#include "library/song_history.h"
#include "playback/candidates.h"

namespace hullrider {

namespace {

constexpr int32_t kMostCalls = 10000;

// What one selection depends on.
struct Rules {
    const AppState& app;
    PickerState& picker;
    UnavailableSongs::Failed failed = UnavailableSongs::Failed::kExcluded;
};

const Playlist* CurrentPlaylist(const AppState& app) {
    const int32_t index = app.selection.currentPlaylist;
    if (index < 0 || static_cast<size_t>(index) >= app.library.playlists.size()) return nullptr;
    return &app.library.playlists[static_cast<size_t>(index)];
}

const Song& SongAtPlace(const AppState& app, const SongChoice& place) {
    return app.library.playlists[static_cast<size_t>(place.playlist)].songs[static_cast<size_t>(place.song)];
}

Pick TakeSong(const AppState& app, Pick pick, const SongChoice& place, Relaxation relaxed = Relaxation::kNone) {
    pick.result = Selection::kItem;
    pick.item = MakeSongItem(app.library, place);
    pick.relaxed = relaxed;
    return pick;
}

Pick TakeStation(const AppState& app, Pick pick, int32_t station) {
    if (station < 0 || static_cast<size_t>(station) >= app.radio.stations.size()) return pick;
    pick.result = Selection::kItem;
    pick.item = MakeStationItem(app.radio, station);
    pick.station = station;
    pick.isReported = !app.selection.stationPreview;
    return pick;
}

bool MayPlay(const Rules& rules, const SongChoice& place) {
    return rules.picker.unavailable.MayPlay(SongAtPlace(rules.app, place).songPath, rules.failed);
}

HistoryKey KeyOf(const AppState& app, const SongChoice& place) {
    return {SongAtPlace(app, place).musicType, place.playlist, place.song};
}

// A song of the list that was not heard lately; otherwise the one heard least recently.
std::optional<SongChoice> DrawFrom(const Rules& rules, const WeightedSongs& list, Relaxation& relaxed) {
    const AppState& app = rules.app;
    const auto mayPlay = [&](const SongChoice& place) { return MayPlay(rules, place); };
    const auto isNew = [&](const SongChoice& place) {
        return !WasPickedLately(app.history, KeyOf(app, place), app.settings.historyDepth) && mayPlay(place);
    };
    if (std::optional<SongChoice> drawn = DrawPassing(list, rules.picker.songRandom, isNew)) return drawn;
    const auto lastPick = [&](const SongChoice& place) { return LastPickOf(app.history, KeyOf(app, place)); };
    std::optional<SongChoice> oldest = LowestPassing(list, mayPlay, lastPick);
    if (oldest && relaxed == Relaxation::kNone) relaxed = Relaxation::kHistory;
    return oldest;
}

// From the category; otherwise from all songs that pass the filter; otherwise from all songs.
Pick DrawRelaxing(const Rules& rules, const WeightedSongs& ofCategory, const Pick& pick) {
    const AppState& app = rules.app;
    Relaxation relaxed = Relaxation::kNone;
    if (const auto drawn = DrawFrom(rules, ofCategory, relaxed)) return TakeSong(app, pick, *drawn, relaxed);
    const int32_t filter = app.selection.favoritesFilter;
    relaxed = Relaxation::kCategory;
    if (const auto drawn = DrawFrom(rules, EverySong(app.library, filter, rules.picker), relaxed)) {
        return TakeSong(app, pick, *drawn, relaxed);
    }
    if (filter == kAllSongs) return pick;
    relaxed = Relaxation::kFilter;
    const auto drawn = DrawFrom(rules, EverySong(app.library, kAllSongs, rules.picker), relaxed);
    return drawn ? TakeSong(app, pick, *drawn, relaxed) : pick;
}

// Songs that have failed to play come last.
Pick DrawRelaxing(const AppState& app, PickerState& picker, const WeightedSongs& ofCategory, const Pick& pick) {
    Pick drawn = DrawRelaxing({app, picker}, ofCategory, pick);
    if (drawn.result == Selection::kItem) return drawn;
    return DrawRelaxing({app, picker, UnavailableSongs::Failed::kAllowed}, ofCategory, pick);
}

// The next song in order; the first song of all when there is no current place.
SongPosition StepWalk(const std::vector<Playlist>& playlists, SongPosition at) {
    const auto exists = [&] { return at.playlist >= 0 && static_cast<size_t>(at.playlist) < playlists.size(); };
    if (!exists()) at = {0, -1};
    ++at.song;
    while (static_cast<size_t>(at.song) >= playlists[static_cast<size_t>(at.playlist)].songs.size()) {
        at = {at.playlist + 1, 0};
        if (!exists()) at.playlist = 0;
    }
    return at;
}

std::optional<SongPosition> WalkUntilPlayable(const Rules& rules) {
    const SelectionState& selection = rules.app.selection;
    SongPosition at{selection.currentPlaylist, std::max(selection.currentSongInPlaylist, -1)};
    for (int64_t left = SongCountOf(rules.app.library); left > 0; --left) {
        at = StepWalk(rules.app.library.playlists, at);
        const bool isQueue = rules.app.library.playlists[static_cast<size_t>(at.playlist)].isQueue;
        if (!isQueue && MayPlay(rules, {at.playlist, at.song, 0, 0})) return at;
    }
    return std::nullopt;
}

// Songs in order, through all playlists and around.
Pick WalkOn(const AppState& app, PickerState& picker, Pick pick) {
    std::optional<SongPosition> at = WalkUntilPlayable({app, picker});
    if (!at) at = WalkUntilPlayable({app, picker, UnavailableSongs::Failed::kAllowed});
    if (!at) return pick;
    pick.walk = at;
    return TakeSong(app, pick, {at->playlist, at->song, 0, 0});
}

Pick SelectUniformly(const AppState& app, PickerState& picker, Pick pick) {
    pick.selectionCalls = 0;
    const Pick uniform = PickUniformSong(app, picker);
    if (uniform.result != Selection::kItem) return pick;
    const SongChoice& place = uniform.item.place;
    const bool isQueue = app.library.playlists[static_cast<size_t>(place.playlist)].isQueue;
    const bool passes = !isQueue && PassesFilter(SongAtPlace(app, place), app.selection.favoritesFilter);
    if (passes && MayPlay({app, picker}, place)) return TakeSong(app, pick, place);
    return DrawRelaxing(app, picker, {}, pick);
}

Pick ShufflePlaylist(const AppState& app, PickerState& picker, const Pick& pick) {
    const Playlist* const playlist = CurrentPlaylist(app);
    if (playlist == nullptr || playlist->songs.empty()) return pick;
    if (pick.selectionCalls >= kMostCalls) return SelectUniformly(app, picker, pick);
    const WeightedSongs songs = EverySongOf(app.library, app.selection.currentPlaylist);
    const Rules rules{app, picker};
    const auto mayPlay = [&](const SongChoice& place) { return MayPlay(rules, place); };
    if (const auto drawn = DrawPassing(songs, picker.songRandom, mayPlay)) return TakeSong(app, pick, *drawn);
    return DrawRelaxing(app, picker, {}, pick);
}

Pick ShuffleLibrary(const AppState& app, PickerState& picker, int32_t category, const Pick& pick) {
    const CandidateLists& lists = BuildWeightedSongList(app.library, app.selection.favoritesFilter, picker);
    if (lists.weightOfAll == 0) return pick;
    if (!LibraryHasCategory(lists, category) || pick.selectionCalls >= kMostCalls) {
        return SelectUniformly(app, picker, pick);
    }
    return DrawRelaxing(app, picker, lists.byCategory[static_cast<size_t>(category)], pick);
}

// The category of the current playlist is the type of its first song.
int32_t CategoryOfPlaylist(const AppState& app) {
    const Playlist* const playlist = CurrentPlaylist(app);
    if (playlist == nullptr || playlist->songs.empty()) return kNoCategory;
    return MusicTypeOf(playlist->songs.front().songPath);
}

enum class Radio { kIncluded, kExcluded };

Pick SelectBy(const AppState& app, const SelectionWeights& weights, PickerState& picker, int32_t category,
              Radio radio = Radio::kIncluded);

// A song of a playlist that stands for internet radio.
Pick SelectFromRadioPlaylist(const AppState& app, PickerState& picker, int32_t index, Pick pick) {
    const std::vector<Song>& songs = app.library.playlists[static_cast<size_t>(index)].songs;
    if (songs.empty()) return pick;
    const SongChoice drawn{index, static_cast<int32_t>(picker.songRandom.Index(songs.size())), 0, 0};
    if (MayPlay({app, picker}, drawn)) return TakeSong(app, pick, drawn);
    if (pick.selectionCalls >= kMostCalls) return SelectUniformly(app, picker, pick);
    return SelectBy(app, *pick.weights, picker, kRadioCategory);
}

Pick SelectRadio(const AppState& app, PickerState& picker, int32_t category, const Pick& pick) {
    const SelectionState& selection = app.selection;
    const auto stationCount = static_cast<int32_t>(app.radio.stations.size());
    const auto mayPlay = [&](const SongChoice& place) {
        if (place.playlist >= stationCount) return true;
        const std::string& url = app.radio.stations[static_cast<size_t>(place.playlist)].url;
        return picker.unavailable.MayPlay(url, UnavailableSongs::Failed::kExcluded);
    };
    if (selection.playMode == kStationMode || selection.stationPreview) {
        const int32_t current = selection.currentInternetStation;
        const bool isListed = current >= 0 && current < stationCount;
        if (isListed && mayPlay({current, 0, 0, 0})) return TakeStation(app, pick, current);
        return ShuffleLibrary(app, picker, category, pick);
    }
    const auto drawn = DrawPassing(BuildStationList(app.radio, app.library), picker.songRandom, mayPlay);
    if (!drawn) return ShuffleLibrary(app, picker, category, pick);
    if (drawn->playlist < stationCount) return TakeStation(app, pick, drawn->playlist);
    return SelectFromRadioPlaylist(app, picker, drawn->playlist - stationCount, pick);
}

bool WantsRadio(const AppState& app, int32_t category, bool radioPlaying) {
    const SelectionState& selection = app.selection;
    const bool stays = radioPlaying || selection.playMode == kStationMode;
    return (selection.playMode != kPlaylistMode && category == kRadioCategory) ||
           (stays && !app.radio.stations.empty()) || selection.stationPreview;
}

Pick SelectBy(const AppState& app, const SelectionWeights& weights, PickerState& picker, int32_t category,
              Radio radio) {
    const SelectionState& selection = app.selection;
    Pick pick;
    pick.weights = weights;
    pick.selectionCalls = selection.selectionCalls;
    bool radioPlaying = selection.radioPlaying;
    if (app.radio.stations.empty() || radio == Radio::kExcluded) pick.weights->radio = 0;
    const CandidateLists& lists = BuildWeightedSongList(app.library, selection.favoritesFilter, picker);
    if (category != kNoCategory || selection.playMode == kPlaylistMode) {
        category = CategoryOfPlaylist(app);
    } else {
        pick.selectionCalls = 0;
        const CategoryDraw drawn =
            PickCategory(*pick.weights, selection, CountsOf(lists, app.radio), picker.categoryRandom);
        pick.weights = drawn.weights;
        pick.savedRadioWeight = drawn.savedRadioWeight;
        pick.spendsRadioExclusion = true;
        category = drawn.category;
        if (category == kNoCategory) {
            pick.result = Selection::kRefused;
            return pick;
        }
        if (selection.playMode != kStationMode) radioPlaying = false;
    }
    pick.selectionCalls = std::min(*pick.selectionCalls + 1, kMostCalls);
    if (radio == Radio::kIncluded && WantsRadio(app, category, radioPlaying))
        return SelectRadio(app, picker, category, pick);
    if (!selection.shuffle) return WalkOn(app, picker, pick);
    if (selection.playMode == kPlaylistMode) return ShufflePlaylist(app, picker, pick);
    return ShuffleLibrary(app, picker, category, pick);
}

}  // namespace

CategoryCounts CountsOf(const CandidateLists& lists, const RadioState& radio) {
    return {lists.songsOf[kMidiCategory], lists.songsOf[kMp3Category], lists.songsOf[kTrackerCategory],
            static_cast<int32_t>(radio.stations.size()),
            static_cast<int32_t>(std::min<int64_t>(lists.weightOfAll, INT32_MAX))};
}

bool LibraryHasCategory(const CandidateLists& lists, int32_t category) {
    return category >= kMidiCategory && category <= kFavoritesCategory &&
           lists.songsOf[static_cast<size_t>(category)] > 0;
}

Pick SelectNextSong(const AppState& app, PickerState& picker, int32_t category) {
    return SelectBy(app, app.weights, picker, category);
}

Pick SelectSongOnly(const AppState& app, PickerState& picker) {
    return SelectBy(app, app.weights, picker, kNoCategory, Radio::kExcluded);
}

Pick SelectForCustomStation(const AppState& app, PickerState& picker) {
    Pick pick = SelectBy(app, app.radio.activeCustomStation.weights, picker, kNoCategory);
    pick.weights.reset();  // keep the user's own
    return pick;
}

Pick PickUniformSong(const AppState& app, PickerState& picker) {
    const int64_t count = SongCountOf(app.library);
    if (count == 0) return {};
    const auto drawn = static_cast<int64_t>(picker.songRandom.Index(static_cast<uint64_t>(count)));
    const std::optional<SongPosition> at = SongAt(app.library, drawn);
    if (!at) return {};
    return TakeSong(app, {}, {at->playlist, at->song, static_cast<int32_t>(drawn), 0});
}

}  // namespace hullrider
