#include "playback/simulation.h"

#include <algorithm>
#include <unordered_map>

#include "library/song_counts.h"
#include "library/song_history.h"
#include "playback/candidates.h"
#include "playback/chosen_song.h"
#include "playback/next_item.h"
#include "playback/play_window.h"

namespace hullrider {

namespace {

constexpr double kShortestTurnSec = 1.0;
constexpr int kMostTries = 1000;

struct Play {
    Selection kind = Selection::kNothing;
    SongChoice choice;
    double lengthSec = 0.0;
};

// Chooses until something can be played.
Play ChoosePlay(AppState& app, Draws& draws, const LengthOf& lengthOf, int64_t& unplayable) {
    Play play;
    for (int tried = 0; tried < kMostTries; ++tried) {
        play.kind = ChooseNextItem(app, draws, play.choice);
        if (play.kind != Selection::kSong) break;
        play.lengthSec = lengthOf(SongOf(app, play.choice));
        if (play.lengthSec >= 0.0) break;
        ++unplayable;
        ForgetLastPick(app.history);
        app.selection.failedNow.push_back(play.choice);
        play.kind = Selection::kNothing;
    }
    app.selection.failedNow.clear();
    return play;
}

double PlaySecondsOf(const AppState& app, Draws& draws, const Play& play) {
    PlayWindow window;
    if (play.kind == Selection::kStation) {
        window = ChooseStationWindow(app.settings, app.selection.customStationActive, draws.window);
    } else {
        const PlayDurations durations = ChooseDurations(app.settings, app.playback.demonstration);
        const int32_t musicType = SongOf(app, play.choice).musicType;
        window = ChoosePlayWindow(play.lengthSec, musicType, durations, draws.window);
        window.endSec = FadeBeginSec(window, play.lengthSec, musicType, durations);
    }
    return std::max(window.endSec - window.startSec, kShortestTurnSec);
}

void AddSong(RotationShares& shares, const Song& song, double share) {
    if (song.musicType >= kMidi && song.musicType <= kTracker)
        shares.byType[static_cast<size_t>(song.musicType)] += share;
    if (IsFavorite(song)) shares.favorites += share;
}

// Finds songs that come again too soon. Looks at nothing that the selection itself goes by.
class RepeatFinder {
public:
    explicit RepeatFinder(int32_t depth) : depth_(depth) {}

    bool IsRepeat(const SongChoice& choice) {
        const uint64_t key =
            uint64_t{static_cast<uint32_t>(choice.playlist)} << 32 | static_cast<uint32_t>(choice.song);
        ++now_;
        const auto [last, isNew] = lastPlay_.try_emplace(key, now_);
        const bool repeats = !isNew && depth_ >= 0 && now_ - last->second <= depth_;
        last->second = now_;
        return repeats;
    }
    void PassStation() { ++now_; }

private:
    int32_t depth_;
    int64_t now_ = 0;
    std::unordered_map<uint64_t, int64_t> lastPlay_;
};

void Divide(RotationShares& shares, double by) {
    for (double& share : shares.byType) share /= by;
    shares.favorites /= by;
}

// What is drawn when a category has nothing to draw from: any song.
void AddUniformly(const AppState& app, RotationShares& shares, double share) {
    const double each = share / std::max(static_cast<double>(SongCountOf(app.library)), 1.0);
    for (const Playlist& playlist : app.library.playlists) {
        for (const Song& song : playlist.songs) AddSong(shares, song, each);
    }
}

void AddCategory(const AppState& app, const CandidateLists& lists, Category category, double share,
                 RotationShares& shares) {
    if (category == kRadioCategory) {
        shares.byType[kInternetRadio] += share;
        return;
    }
    const WeightedSongs& list = lists.byCategory[static_cast<size_t>(category)];
    if (IsEmpty(list)) return AddUniformly(app, shares, share);
    int64_t before = 0;
    for (size_t i = 0; i < list.songs.size(); ++i) {
        const auto weight = static_cast<double>(list.upTo[i] - before);
        before = list.upTo[i];
        AddSong(shares, SongOf(app, list.songs[i]), share * weight / static_cast<double>(list.upTo.back()));
    }
}

}  // namespace

Rotation SimulateRotation(AppState& app, Draws& draws, int64_t plays, const LengthOf& lengthOf) {
    Rotation rotation;
    RepeatFinder repeats(app.settings.historyDepth);
    double playedSec = 0.0;
    while (rotation.plays < plays) {
        const Play play = ChoosePlay(app, draws, lengthOf, rotation.unplayable);
        if (play.kind != Selection::kSong && play.kind != Selection::kStation) break;
        ++rotation.plays;
        playedSec += PlaySecondsOf(app, draws, play);
        if (play.kind == Selection::kStation) {
            rotation.drawn.byType[kInternetRadio] += 1.0;
            repeats.PassStation();
        } else {
            AddSong(rotation.drawn, SongOf(app, play.choice), 1.0);
            if (repeats.IsRepeat(play.choice)) ++rotation.repeats;
        }
    }
    const double count = std::max(static_cast<double>(rotation.plays), 1.0);
    Divide(rotation.drawn, count);
    rotation.meanPlaySec = playedSec / count;
    return rotation;
}

std::array<double, 5> CategoryShares(AppState& app) {
    const CandidateLists& lists = BuildWeightedSongList(app.library, app.selection);
    PrepareWeights(app.weights, app.selection, CountsOf(lists, app.radio));
    std::array<double, 5> shares{};
    for (int32_t percent = 0; percent < 100; ++percent) {
        const Category category = CategoryAt(app.weights, percent);
        if (category != kNoCategory) shares[static_cast<size_t>(category)] += 0.01;
    }
    return shares;
}

RotationShares PromisedShares(AppState& app) {
    const std::array<double, 5> byCategory = CategoryShares(app);
    const CandidateLists& lists = BuildWeightedSongList(app.library, app.selection);
    RotationShares shares;
    for (size_t i = 0; i < byCategory.size(); ++i) {
        if (byCategory[i] > 0.0) AddCategory(app, lists, static_cast<Category>(i), byCategory[i], shares);
    }
    return shares;
}

}  // namespace hullrider
