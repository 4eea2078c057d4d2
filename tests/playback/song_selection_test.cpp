#include "playback/song_selection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>

#include "library/song_history.h"
#include "playback/candidates.h"
#include "playback/song_category.h"
#include "tests/playback/made_library.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

using Place = std::pair<int32_t, int32_t>;

// 99.9 % of the counts of independent draws with this chance lie within so much of what is expected.
double Interval(double chance, int draws) {
    return 3.29 * std::sqrt(chance * (1.0 - chance) * draws) + 1.0;
}

class SongSelectionTest : public testing::Test {
protected:
    // Two MIDI songs, three audio files, two modules; "fav" is drawn four times as often as a plain song.
    void FillLibrary() {
        SetLibrary(app_, {{MadeSong("a/1.mid", kMidi), MadeSong("a/2.mid", kMidi, 1, 1)},
                          {},
                          {MadeSong("b/1.mp3", kMp3), MadeSong("b/fav.mp3", kMp3, 1, 3), MadeSong("b/3.mp3", kMp3)},
                          {MadeSong("c/1.xm", kTracker), MadeSong("c/never.xm", kTracker, 1, -1)}});
    }

    // What is picked counts as played.
    SongChoice PickOne(int32_t category = kNoCategory) {
        const Pick pick = SelectNextSong(app_, picker_, category);
        EXPECT_EQ(pick.result, Selection::kItem);
        TakeEffect(app_, pick);
        return pick.item.place;
    }

    // Counts of so many picks.
    std::map<Place, int> Counts(int draws) {
        std::map<Place, int> counts;
        for (int i = 0; i < draws; ++i) {
            const SongChoice choice = PickOne();
            ++counts[{choice.playlist, choice.song}];
        }
        return counts;
    }

    AppState app_;
    PickerState picker_{5};
};

// What the rules say by themselves, entry by entry: how likely each song is within a category.
std::map<Place, double> ChancesWithin(const AppState& app, int32_t category) {
    std::map<Place, double> chances;
    double sum = 0.0;
    for (size_t i = 0; i < app.library.playlists.size(); ++i) {
        for (size_t j = 0; j < app.library.playlists[i].songs.size(); ++j) {
            const Song& song = app.library.playlists[i].songs[j];
            const bool favorite = song.isFavorite == 1;
            const int32_t filter = app.selection.favoritesFilter;
            if (category == kFavoritesCategory ? !favorite : song.musicType != category) continue;
            if (filter == kFavoritesOnly && !favorite) continue;
            if (filter == kNoFavorites && favorite && category != kFavoritesCategory) continue;
            const double weight = favorite ? song.favoriteCount + 1.0 : 1.0;
            if (weight < 1.0) continue;
            chances[{static_cast<int32_t>(i), static_cast<int32_t>(j)}] = weight;
            sum += weight;
        }
    }
    for (auto& [place, chance] : chances) chance /= sum;
    return chances;
}

TEST_F(SongSelectionTest, ManyDrawsKeepThePromiseOfTheWeights) {
    struct Case {
        const char* what;
        SelectionWeights weights;  // favorites, MIDI, MP3, tracker, radio
        int32_t filter;
    };
    const Case cases[] = {
        {"built in", {50, 50, 50, 50, 20}, kAllSongs}, {"favorites", {90, 5, 5, 5, 0}, kAllSongs},
        {"one kind", {0, 0, 7, 0, 0}, kAllSongs},      {"rare", {1, 1, 100, 1, 0}, kAllSongs},
        {"no weights", {0, 0, 0, 0, 0}, kAllSongs},    {"no favorites", {10, 30, 60, 40, 0}, kNoFavorites},
    };
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int kDraws = 100'000;  // the instrumented program is many times slower
#else
    constexpr int kDraws = 1'000'000;
#endif
    app_.settings.historyDepth = -1;
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        FillLibrary();
        app_.weights = test.weights;
        app_.selection.favoritesFilter = test.filter;
        const std::map<Place, int> counts = Counts(kDraws);
        std::map<Place, double> chances;  // the weights are by now those that were drawn from
        for (int32_t percent = 0; percent < 100; ++percent) {
            for (const auto& [place, chance] : ChancesWithin(app_, CategoryAt(app_.weights, percent))) {
                chances[place] += chance / 100.0;
            }
        }
        for (const auto& [place, count] : counts) EXPECT_TRUE(chances.contains(place)) << count;
        for (const auto& [place, chance] : chances) {
            const auto found = counts.find(place);
            EXPECT_NEAR(found == counts.end() ? 0 : found->second, chance * kDraws, Interval(chance, kDraws))
                << place.first << '/' << place.second;
        }
    }
}

TEST_F(SongSelectionTest, TheHistoryForbidsTheLastSongsAndLeavesTheOthersTheirShares) {
    constexpr int kDraws = 200'000;
    std::vector<Song> songs;
    for (int i = 0; i < 5; ++i) songs.push_back(MadeSong("a/" + std::to_string(i) + ".mp3", kMp3));
    SetLibrary(app_, {songs});
    app_.settings.historyDepth = 3;
    std::map<int32_t, std::map<int32_t, int>> after;  // what came four picks after which song
    std::vector<int32_t> picked;
    for (int i = 0; i < kDraws; ++i) {
        picked.push_back(PickOne().song);
        const size_t n = picked.size();
        for (size_t back = 1; back <= 3 && back < n; ++back) ASSERT_NE(picked[n - 1], picked[n - 1 - back]);
        if (n > 4) ++after[picked[n - 5]][picked[n - 1]];
    }
    // Two of the five songs may come: the one that came four picks before and one other, equally likely.
    for (const auto& [song, next] : after) {
        int total = 0;
        for (const auto& [other, count] : next) total += count;
        EXPECT_NEAR(next.at(song), total / 2, Interval(0.5, total)) << song;
    }
}

TEST_F(SongSelectionTest, TheHistoryIsGivenUpFirstAndTheSongHeardLongestAgoComes) {
    SetLibrary(app_, {{MadeSong("a/1.mid", kMidi), MadeSong("a/2.mid", kMidi), MadeSong("a/3.mid", kMidi)},
                      {MadeSong("b/1.mp3", kMp3)}});
    app_.settings.historyDepth = 50;
    app_.weights = {0, 1, 1, 0, 0};
    constexpr int kDraws = 4'000;
    int midi = 0;
    std::vector<int32_t> order;
    for (int i = 0; i < kDraws; ++i) {
        const SongChoice choice = PickOne();
        if (i > 10) {
            EXPECT_EQ(app_.playback.relaxed, Relaxation::kHistory);
        }
        if (choice.playlist != 0) continue;
        ++midi;
        order.push_back(choice.song);
        const size_t n = order.size();
        if (n > 3) {
            ASSERT_EQ(order[n - 1], order[n - 4]) << "round and round, none too soon";
        }
    }
    EXPECT_NEAR(midi, kDraws / 2, Interval(0.5, kDraws));
}

TEST_F(SongSelectionTest, TheFilterIsGivenUpLastAndOnlyWhenNothingThatPassesItCanBePlayed) {
    std::vector<Song> songs;
    for (int i = 0; i < 40; ++i) {
        songs.push_back(MadeSong("a/" + std::to_string(i) + (i % 2 ? ".mp3" : ".xm"), i % 2 ? kMp3 : kTracker, i < 3));
    }
    SetLibrary(app_, {songs, {MadeSong("b/1.mid", kMidi)}});
    app_.weights = {0, 1, 1, 1, 0};
    app_.settings.historyDepth = 30;
    for (const int32_t filter : {kFavoritesOnly, kNoFavorites}) {
        app_.selection.favoritesFilter = filter;
        for (int i = 0; i < 60; ++i) {
            const SongChoice choice = PickOne();
            EXPECT_EQ(choice.playlist == 0 && choice.song < 3, filter == kFavoritesOnly);
        }
    }
    app_.selection.favoritesFilter = kFavoritesOnly;
    for (int i = 0; i < 3; ++i) picker_.unavailable.NoteMissingFile(songs[static_cast<size_t>(i)].songPath);
    for (int i = 0; i < 20; ++i) {
        PickOne();
        EXPECT_EQ(app_.playback.relaxed, Relaxation::kFilter);
    }
}

TEST_F(SongSelectionTest, WhatIsAwayIsPassedOverAndWhatIsBrokenComesLast) {
    SetLibrary(app_, {{MadeSong("gone/a/1.mp3", kMp3), MadeSong("gone/a/2.mp3", kMp3)},
                      {MadeSong("b/1.xm", kTracker), MadeSong("b/2.xm", kTracker)}});
    app_.settings.historyDepth = -1;
    app_.weights = {0, 0, 1, 0, 0};
    picker_.unavailable.NoteAwayFolder("gone");
    picker_.unavailable.NoteBroken("b/1.xm");
    for (const bool shuffle : {true, false}) {
        app_.selection.shuffle = shuffle;
        for (int i = 0; i < 10; ++i) EXPECT_EQ(PickOne().song, 1);
    }
    // Within one attempt nothing is tried twice; with the next one it is.
    picker_.unavailable.NoteBroken("b/2.xm");
    EXPECT_EQ(SelectNextSong(app_, picker_, kNoCategory).result, Selection::kNothing);
    picker_.unavailable.BeginAttempt();
    EXPECT_EQ(PickOne().playlist, 1);
}

TEST_F(SongSelectionTest, WithoutShuffleAllIsWalkedInOrderAndAPickChangesNothingUntilItTakesEffect) {
    FillLibrary();
    picker_.unavailable.NoteMissingFile("b/1.mp3");
    app_.selection.shuffle = false;
    const std::vector<Place> expected = {{0, 0}, {0, 1}, {2, 1}, {2, 2}, {3, 0}, {3, 1}, {0, 0}, {0, 1}};
    for (const Place& place : expected) {
        for (int i = 0; i < 3; ++i) {
            const Pick dropped = SelectNextSong(app_, picker_, kNoCategory);
            EXPECT_EQ(Place(dropped.item.place.playlist, dropped.item.place.song), place);
        }
        const bool isFirst = app_.selection.firstPick;
        const int32_t before = app_.playback.currentType;
        PickOne();
        EXPECT_EQ(isFirst, app_.history.records.size() == 1);
        EXPECT_EQ(app_.playback.previousType, isFirst ? app_.playback.currentType : before);
    }
    EXPECT_EQ(app_.history.records.size(), expected.size());
    app_.selection.currentPlaylist = 77;  // of a library that was larger
    EXPECT_EQ(PickOne().playlist, 0);
}

TEST_F(SongSelectionTest, InPlaylistModeEveryTenThousandthPickIsOneOfTheWholeLibrary) {
    FillLibrary();
    app_.selection.playMode = kPlaylistMode;
    app_.selection.currentPlaylist = 2;
    int elsewhere = 0;
    for (int round = 0; round < 40; ++round) {
        app_.selection.selectionCalls = 9998;
        EXPECT_EQ(PickOne().playlist, 2);
        EXPECT_EQ(app_.selection.selectionCalls, 9999);
        elsewhere += PickOne().playlist != 2;
        EXPECT_EQ(app_.selection.selectionCalls, 0);
    }
    EXPECT_GT(elsewhere, 0);
}

TEST_F(SongSelectionTest, PlaylistModeDrawsEverySongOfTheCurrentPlaylistAlike) {
    FillLibrary();
    app_.selection.playMode = kPlaylistMode;
    app_.selection.currentPlaylist = 2;
    app_.selection.favoritesFilter = kFavoritesOnly;  // neither this nor the history is asked here
    app_.settings.historyDepth = 20;
    constexpr int kDraws = 9'000;
    const std::map<Place, int> counts = Counts(kDraws);
    ASSERT_EQ(counts.size(), 3U);
    for (const auto& [place, count] : counts) EXPECT_NEAR(count, kDraws / 3, Interval(1.0 / 3.0, kDraws));
}

TEST_F(SongSelectionTest, TheCategoryOfAReentryIsThatOfTheCurrentPlaylist) {
    FillLibrary();
    app_.settings.historyDepth = -1;
    app_.selection.currentPlaylist = 3;
    for (int i = 0; i < 20; ++i) EXPECT_EQ(PickOne(kRadioCategory).playlist, 3);
    int elsewhere = 0;
    for (int i = 0; i < 40; ++i) {
        app_.selection.selectionCalls = 9999;
        elsewhere += PickOne(kRadioCategory).playlist != 3;
    }
    EXPECT_GT(elsewhere, 0) << "after so many without a draw of a category, from all there is";
}

TEST_F(SongSelectionTest, StationsAreDrawnByTheirCountsAndReported) {
    FillLibrary();
    app_.radio.stations = {{"one", "http://1", "", "", {}, 0, 2},
                           {"never", "http://2", "", "", {}, 0, -1},
                           {"two", "http://3", "", "", {}, 0, 0},
                           {"left out", "http://4", "", "", {}, 0, 9}};
    app_.radio.stations[3].isIncluded = false;
    Recount(app_);
    app_.weights = {0, 0, 0, 0, 1};
    std::map<Place, int> counts = Counts(40'000);
    ASSERT_EQ(counts.size(), 2U);
    EXPECT_NEAR((counts[{0, 0}]), 30'000, Interval(0.75, 40'000));
    EXPECT_TRUE(app_.selection.radioPlaying);
    EXPECT_EQ(app_.playback.currentType, kInternetRadio);
    EXPECT_EQ(app_.history.records.back().type, kInternetRadio);

    app_.selection.playMode = kStationMode;
    app_.selection.currentInternetStation = 1;
    counts = Counts(20);
    EXPECT_EQ((counts[{1, 0}]), 20);

    app_.radio.stations.clear();  // without stations songs are picked in every mode
    app_.selection.radioPlaying = true;
    PickOne();
    EXPECT_FALSE(app_.selection.radioPlaying);
}

TEST_F(SongSelectionTest, ACustomStationDrawsByItsOwnWeights) {
    FillLibrary();
    app_.settings.historyDepth = -1;
    app_.radio.activeCustomStation = {"modules", {0, 0, 0, 1, 0}};
    for (int i = 0; i < 50; ++i) {
        const Pick pick = SelectForCustomStation(app_, picker_);
        ASSERT_EQ(pick.result, Selection::kItem);
        EXPECT_EQ(pick.item.place.playlist, 3);
        TakeEffect(app_, pick);
    }
    EXPECT_EQ(app_.weights.midi, 50);
}

TEST_F(SongSelectionTest, AnUnknownWeightAndAHugeFavoriteAreStillDrawn) {
    SetLibrary(app_, {{MadeSong("a/1.mp3", kMp3, 1, INT32_MAX), MadeSong("a/2.mp3", kMp3, 1, INT32_MAX)}});
    app_.settings.historyDepth = INT32_MAX;
    std::map<Place, int> counts = Counts(1000);
    EXPECT_EQ(counts.size(), 2U);
    EXPECT_EQ(CountsOf(picker_.candidates, app_.radio).lastCandidateCount, INT32_MAX);
    app_.weights = {-1, 0, 0, 0, 0};
    EXPECT_EQ(SelectNextSong(app_, picker_, kNoCategory).result, Selection::kRefused);
}

TEST_F(SongSelectionTest, TheUniformPickReachesEverySongOfALibraryFromTheCacheEquallyOften) {
    app_.library.totalSongs = 0;
    app_.library.playlists = {{"A", {MadeSong("a", kMp3)}}, {"B", {}}};
    app_.library.playlists.push_back({"C", {MadeSong("b", kMp3), MadeSong("c", kMp3), MadeSong("d", kMp3)}});
    std::map<Place, int> drawn;
    constexpr int kDraws = 40000;
    for (int i = 0; i < kDraws; ++i) {
        const Pick pick = PickUniformSong(app_, picker_);
        ASSERT_EQ(pick.result, Selection::kItem);
        ++drawn[{pick.item.place.playlist, pick.item.place.song}];
    }
    ASSERT_EQ(drawn.size(), 4U);
    for (const auto& [where, count] : drawn) EXPECT_NEAR(count, kDraws / 4, Interval(0.25, kDraws));
    app_.library.playlists.clear();
    EXPECT_EQ(PickUniformSong(app_, picker_).result, Selection::kNothing);
}

}  // namespace
}  // namespace hullrider
