#include "playback/simulation.h"

#include <algorithm>
#include <unordered_map>

#include "library/song_counts.h"
#include "playback/candidates.h"
#include "playback/next_item.h"
#include "playback/next_up.h"
#include "playback/play_window.h"

namespace hullrider {

namespace {

constexpr int kMostTries = 1000;

// Null for an item that is not in the library.
const Song* SongOf(const AppState& app, const Pick& pick) {
    if (pick.item.kind != PlayItem::Kind::kSong) return nullptr;
    return FindSong(app.library, {pick.item.place.playlist, pick.item.place.song});
}

struct Play {
    Pick pick;
    double lengthSec = 0.0;
};

// Chooses until an item can be played, which then counts as played.
Play ChoosePlay(AppState& app, PickerState& picker, const LengthOf& lengthOf, int64_t& unplayable) {
    Play play;
    picker.unavailable.BeginAttempt();
    for (int tried = 0; tried < kMostTries; ++tried) {
        play.pick = ChooseNextItem(app, picker, {});
        if (play.pick.result != Selection::kItem) return play;
        const Song* const song = SongOf(app, play.pick);
        play.lengthSec = song == nullptr ? 0.0 : lengthOf(*song);
        if (play.lengthSec >= 0.0) break;
        ++unplayable;
        picker.unavailable.NoteBroken(play.pick.item.address);
        play.pick.result = Selection::kNothing;
    }
    if (play.pick.result == Selection::kItem) TakeEffect(app, play.pick);
    return play;
}

double PlaySecondsOf(const AppState& app, PickerState& picker, const Play& play) {
    PlayWindow window;
    if (play.pick.item.hasLength) {
        window =
            ChooseSongWindow(play.lengthSec, play.pick.item.type, DurationsFor(app, play.pick), picker.windowRandom);
    } else {
        window = ChooseStationWindow(app.settings, app.selection.customStationActive, picker.windowRandom);
    }
    return std::max(window.endSec - window.startSec, std::chrono::duration<double>(kShortestPlay).count());
}

void AddSong(RotationShares& shares, const Song& song, double share) {
    if (song.musicType >= kMidi && song.musicType <= kTracker)
        shares.byType[static_cast<size_t>(song.musicType)] += share;
    if (IsFavorite(song)) shares.favorites += share;
}

// Finds songs that repeat too soon, independently of the selection's own bookkeeping.
class RepeatFinder {
public:
    explicit RepeatFinder(int32_t depth) : depth_(depth) {}

    bool IsRepeat(const PlayItem& item) {
        ++now_;
        if (!item.hasLength) return false;
        const auto [last, isNew] = lastPlay_.try_emplace(item.address, now_);
        const bool repeats = !isNew && depth_ >= 0 && now_ - last->second <= depth_;
        last->second = now_;
        return repeats;
    }

private:
    int32_t depth_;
    int64_t now_ = 0;
    std::unordered_map<std::string, int64_t> lastPlay_;
};

void Divide(RotationShares& shares, double by) {
    for (double& share : shares.byType) share /= by;
    shares.favorites /= by;
}

// The fallback for a category without songs: any song that passes the filter.
void AddUniformly(const AppState& app, PickerState& picker, RotationShares& shares, double share) {
    const WeightedSongs& passing = EverySong(app.library, app.selection.favoritesFilter, picker);
    const WeightedSongs& any = IsEmpty(passing) ? EverySong(app.library, kAllSongs, picker) : passing;
    const double each = share / std::max(static_cast<double>(any.songs.size()), 1.0);
    for (const SongChoice& place : any.songs)
        AddSong(shares, *FindSong(app.library, {place.playlist, place.song}), each);
}

void AddCategory(const AppState& app, PickerState& picker, Category category, double share, RotationShares& shares) {
    if (category == kRadioCategory) {
        shares.byType[kInternetRadio] += share;
        return;
    }
    const WeightedSongs& list = picker.candidates.byCategory[static_cast<size_t>(category)];
    if (IsEmpty(list)) return AddUniformly(app, picker, shares, share);
    int64_t before = 0;
    for (size_t i = 0; i < list.songs.size(); ++i) {
        const auto weight = static_cast<double>(list.upTo[i] - before);
        before = list.upTo[i];
        const SongChoice& place = list.songs[i];
        AddSong(shares, *FindSong(app.library, {place.playlist, place.song}),
                share * weight / static_cast<double>(list.upTo.back()));
    }
}

}  // namespace

Rotation SimulateRotation(AppState& app, PickerState& picker, int64_t plays, const LengthOf& lengthOf) {
    Rotation rotation;
    RepeatFinder repeats(app.settings.historyDepth);
    double playedSec = 0.0;
    while (rotation.plays < plays) {
        const Play play = ChoosePlay(app, picker, lengthOf, rotation.unplayable);
        if (play.pick.result != Selection::kItem) break;
        ++rotation.plays;
        playedSec += PlaySecondsOf(app, picker, play);
        const Song* const song = SongOf(app, play.pick);
        if (song == nullptr) rotation.drawn.byType[static_cast<size_t>(play.pick.item.type)] += 1.0;
        if (song != nullptr) AddSong(rotation.drawn, *song, 1.0);
        if (repeats.IsRepeat(play.pick.item)) ++rotation.repeats;
    }
    const double count = std::max(static_cast<double>(rotation.plays), 1.0);
    Divide(rotation.drawn, count);
    rotation.meanPlaySec = playedSec / count;
    return rotation;
}

std::array<double, 5> CategoryShares(const AppState& app, PickerState& picker) {
    const CandidateLists& lists = BuildWeightedSongList(app.library, app.selection.favoritesFilter, picker);
    const SelectionWeights weights = PreparedWeights(app.weights, app.selection, CountsOf(lists, app.radio));
    std::array<double, 5> shares{};
    for (int32_t percent = 0; percent < 100; ++percent) {
        const Category category = CategoryAt(weights, percent);
        if (category != kNoCategory) shares[static_cast<size_t>(category)] += 0.01;
    }
    return shares;
}

RotationShares PromisedShares(const AppState& app, PickerState& picker) {
    const std::array<double, 5> byCategory = CategoryShares(app, picker);
    RotationShares shares;
    for (size_t i = 0; i < byCategory.size(); ++i) {
        if (byCategory[i] > 0.0) AddCategory(app, picker, static_cast<Category>(i), byCategory[i], shares);
    }
    return shares;
}

}  // namespace hullrider
