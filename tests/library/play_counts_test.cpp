#include "library/play_counts.h"

#include <gtest/gtest.h>

#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

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
        EXPECT_FALSE(ReadPlayCounts(text, counts, error)) << text;
    }
    ASSERT_TRUE(
        ReadPlayCounts(R"({"playCounts":{"a":99999999999,"b":-3,"c":"x","d":1.5,"e":2,"":[]}})", counts, error));
    EXPECT_EQ(counts.byPath.size(), 2U);
    EXPECT_EQ(counts.byPath.at("a"), INT32_MAX);
    Song song{"a", 0, INT32_MAX, 0, kMp3};
    CountPlay(song, counts);
    EXPECT_EQ(song.playCount, INT32_MAX);
    EXPECT_EQ(counts.byPath.at("a"), INT32_MAX);
}

}  // namespace
}  // namespace hullrider
