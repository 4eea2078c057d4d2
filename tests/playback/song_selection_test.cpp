#include "playback/song_selection.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

Playlist Album(std::vector<std::string> paths) {
    Playlist playlist;
    for (std::string& path : paths) playlist.songs.push_back({std::move(path), 0, 0, 0, kMp3});
    return playlist;
}

TEST(SongSelection, EverySongOfALibraryFromTheCacheIsDrawnEquallyOften) {
    MusicLibrary library;  // as after a load from the cache: totalSongs is 0
    library.playlists = {Album({"a"}), Album({}), Album({"b", "c", "d"})};
    Random random(5);
    std::map<std::pair<int32_t, int32_t>, int> drawn;
    constexpr int kDraws = 40000;
    for (int i = 0; i < kDraws; ++i) {
        SongChoice choice;
        ASSERT_TRUE(PickUniformSong(library, random, choice));
        ++drawn[{choice.playlist, choice.song}];
    }
    ASSERT_EQ(drawn.size(), 4U);
    // 99.9 % of such counts lie within 3.3 standard deviations of 10 000.
    for (const auto& [where, count] : drawn) EXPECT_NEAR(count, kDraws / 4, 290) << where.first << '/' << where.second;
}

TEST(SongSelection, ALibraryWithoutSongsChoosesNothing) {
    MusicLibrary library;
    library.totalSongs = 7;  // a counter that says otherwise does not matter
    library.playlists = {Album({})};
    Random random(5);
    SongChoice choice{1, 2, 3, 4};
    EXPECT_FALSE(PickUniformSong(library, random, choice));
    EXPECT_EQ(choice.playlist, 0);
    EXPECT_EQ(choice.song, 0);
    EXPECT_EQ(choice.extra, 0);
    EXPECT_FALSE(SelectNextSong(library, random, choice));
}

TEST(SongSelection, SongsWhoseFileIsGoneArePassedOver) {
    const TemporaryFolder folder;
    MusicLibrary library;
    library.playlists = {Album({"gone 1", folder.Write("\xC3\xA4.mp3", "x"), "gone 2"})};
    Random random(5);
    for (int i = 0; i < 50; ++i) {
        SongChoice choice;
        ASSERT_TRUE(SelectNextSong(library, random, choice));
        ASSERT_EQ(choice.song, 1);
    }
    library.playlists = {Album({"gone 1", "gone 2"})};
    SongChoice choice;
    EXPECT_FALSE(SelectNextSong(library, random, choice));
}

}  // namespace
}  // namespace hullrider
