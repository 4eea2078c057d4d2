#include "library/play_counts.h"

#include <gtest/gtest.h>

#include "tests/temporary_folder.h"

namespace hullrider {

TEST(PlayCounts, OutliveARescanAndSongsThatAreAwayKeepTheirs) {
    const TemporaryFolder folder;
    const std::string path = folder.At("MusicLibraryPlayCount.json");
    MusicLibrary library;
    library.playlists = {{"A", {{"\xC3\xA4.mp3", 0, 0, 0, kMp3}, {"away.mp3", 0, 7, 0, kMp3}, {"never.mp3"}}}};
    PlayCounts counts;
    MergePlayCounts(library, counts);
    for (int i = 0; i < 3; ++i) CountPlay(library.playlists[0].songs[0], counts);
    ASSERT_TRUE(SavePlayCounts(path, counts));

    PlayCounts loaded;
    ASSERT_TRUE(LoadPlayCounts(path, loaded));
    MusicLibrary scanned;
    scanned.playlists = {{"A", {{"never.mp3"}, {"\xC3\xA4.mp3", 0, 0, 0, kMp3}}}};
    MergePlayCounts(scanned, loaded);
    EXPECT_EQ(scanned.playlists[0].songs[0].playCount, 0);
    EXPECT_EQ(scanned.playlists[0].songs[1].playCount, 3);
    EXPECT_EQ(loaded.byPath.at("away.mp3"), 7);
    EXPECT_EQ(loaded.byPath.size(), 2U);
}

TEST(PlayCounts, JunkAndCountsBeyondAnyLimitAreBounded) {
    PlayCounts counts;
    std::string error;
    for (const char* text : {"", "[]", "{\"playCounts\":[1]}", "{}", "7", "\xFF"}) {
        EXPECT_EQ(ReadPlayCounts(text, counts, error), StateReading::kUnreadable) << text;
        EXPECT_NE(error, "") << text;
    }
    const char* const odd = R"({"playCounts":{"a":99999999999,"b":-3,"c":"x","d":1.5,"e":2,"":[]}})";
    ASSERT_EQ(ReadPlayCounts(odd, counts, error), StateReading::kWhole);
    EXPECT_EQ(counts.byPath.size(), 2U);
    EXPECT_EQ(counts.byPath.at("a"), INT32_MAX);
    PlayCounts torn;
    EXPECT_EQ(ReadPlayCounts(R"({"playCounts":{"a.mp3":3,"b.mp3":)", torn, error), StateReading::kPartly);
    EXPECT_EQ(torn.byPath, (decltype(torn.byPath){{"a.mp3", 3}}));
    Song song{"a", 0, INT32_MAX, 0, kMp3};
    CountPlay(song, counts);
    EXPECT_EQ(song.playCount, INT32_MAX);
    EXPECT_EQ(counts.byPath.at("a"), INT32_MAX);

    Song dropped{"b.mp3"};  // found again without what was counted of it
    counts.byPath["b.mp3"] = 7;
    CountPlay(dropped, counts);
    EXPECT_EQ(counts.byPath.at("b.mp3"), 7);
}

TEST(PlayCounts, AHundredThousandShortNamesAreNotTooMany) {
    PlayCounts counts;
    for (int i = 0; i < 100'000; ++i) counts.byPath["M:\\" + std::to_string(i)] = 1;
    PlayCounts loaded;
    std::string error;
    EXPECT_EQ(ReadPlayCounts(PlayCountsText(ListOf(counts)), loaded, error), StateReading::kWhole) << error;
    EXPECT_EQ(loaded.byPath.size(), 100'000U);
}

}  // namespace hullrider
