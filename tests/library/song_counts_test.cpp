#include "library/song_counts.h"

#include <gtest/gtest.h>

#include <limits>

namespace hullrider {
namespace {

Song SongOf(int32_t type, int32_t favoriteCount = 0, int32_t isFavorite = 0) {
    Song song;
    song.musicType = type;
    song.favoriteCount = favoriteCount;
    song.isFavorite = isFavorite;
    return song;
}

MusicLibrary LibraryOf(std::vector<std::vector<Song>> playlists) {
    MusicLibrary library;
    for (std::vector<Song>& songs : playlists) {
        library.playlists.emplace_back();
        library.playlists.back().songs = std::move(songs);
    }
    return library;
}

TEST(SongCounts, TheRecountCountsWhatIsThereAndForgetsWhatWas) {
    MusicLibrary library =
        LibraryOf({{SongOf(kMidi), SongOf(kMp3, 2), SongOf(kMp3)}, {}, {SongOf(kTracker, -1), SongOf(7, 1)}});
    library.totalSongs = 12;
    SelectionWeights weights{1, 2, 3, 4, 5};
    for (int round = 0; round < 2; ++round) UpdateSongCounts(library, weights, 6);
    EXPECT_EQ(library.numberOfPlaylists, 3);
    EXPECT_EQ(library.typedSongCount, 4);
    EXPECT_EQ(library.midiSongCount, 1);
    EXPECT_EQ(library.mp3SongCount, 2);
    EXPECT_EQ(library.trackerSongCount, 1);
    EXPECT_EQ(library.favoriteSongCount, 2);
    EXPECT_EQ(library.internetStationCount, 6);
    EXPECT_EQ(library.totalSongs, 12) << "belongs to the scans";
}

TEST(SongCounts, AKindWithNothingToPlayLosesItsWeightAndTheOthersKeepTheirs) {
    const struct {
        std::vector<Song> songs;
        int32_t stations;
        std::vector<int32_t> expected;
    } table[] = {{{}, 0, {0, 0, 0, 0, 0}},
                 {{SongOf(kTracker)}, 0, {0, 0, 0, 4, 0}},
                 {{SongOf(kTracker)}, 1, {0, 0, 0, 4, 5}},
                 {{SongOf(kMidi), SongOf(kMp3, 1)}, 0, {1, 2, 3, 0, 0}}};
    for (const auto& row : table) {
        MusicLibrary library = LibraryOf({row.songs});
        SelectionWeights weights{1, 2, 3, 4, 5};
        UpdateSongCounts(library, weights, row.stations);
        EXPECT_EQ((std::vector{weights.favorites, weights.midi, weights.mp3, weights.tracker, weights.radio}),
                  row.expected);
    }
}

TEST(SongCounts, EverySongHasOneNumberAndNothingElseHas) {
    const MusicLibrary library = LibraryOf({{}, {SongOf(kMidi), SongOf(kMp3)}, {}, {SongOf(kTracker)}, {}});
    EXPECT_EQ(SongCountOf(library), 3);
    const std::pair<int32_t, int32_t> expected[] = {{1, 0}, {1, 1}, {3, 0}};
    for (int64_t number = 0; number < 3; ++number) {
        const std::optional<SongPosition> position = SongAt(library, number);
        ASSERT_TRUE(position);
        EXPECT_EQ(std::pair(position->playlist, position->song), expected[number]);
    }
    for (const int64_t number : {int64_t{3}, int64_t{-1}, std::numeric_limits<int64_t>::max()}) {
        EXPECT_FALSE(SongAt(library, number)) << number;
    }
    EXPECT_EQ(SongCountOf({}), 0);
    EXPECT_FALSE(SongAt({}, 0));
}

TEST(SongCounts, NumbersAreShownInGroupsOfThree) {
    const std::pair<int64_t, const char*> table[] = {{0, "0"},
                                                     {999, "999"},
                                                     {1000, "1,000"},
                                                     {-999, "-999"},
                                                     {-1000, "-1,000"},
                                                     {1234567, "1,234,567"},
                                                     {-123456, "-123,456"},
                                                     {INT32_MIN, "-2,147,483,648"},
                                                     {123456789012, "123,456,789,012"}};
    for (const auto& [value, text] : table) EXPECT_EQ(FormatWithThousands(value), text);
}

}  // namespace
}  // namespace hullrider
