// Changes of the music folders while a player runs, without a front.
#include "app/folder_scan.h"

#include "app/audio_start.h"
#include "app/handed_files.h"
#include "playback/pick.h"
#include "playback/play_next.h"
#include "playback/queue.h"
#include "playback/stream_slots.h"
#include "tests/app/whole_player.h"

namespace hullrider {
namespace {

class FolderScanTest : public WholePlayerTest {
protected:
    FolderScanTest() {
        folder_.Write("demo/Album/demo.mp3", ToneWav(300.0, 100.0));
        for (const char* song : {"music/A/one.mp3", "music/B/two.mid", "music/B/three.xm"}) folder_.Write(song, "x");
        const json favorite{{"songPath", folder_.At("music/A/one.mp3")}, {"favoriteCount", 6}};
        folder_.Write("music/B/favorite.json", json{{"favorites", {favorite}}}.dump());
    }

    Player& StartWithDemo() {
        RunOptions options;
        options.fallbackMusic = folder_.At("demo");
        return Start(options);
    }

    void Scan(Player& player, const std::vector<std::string>& folders) {
        player.state.settings.directoryPaths.clear();
        for (const std::string& name : folders) player.state.settings.directoryPaths.push_back(folder_.At(name));
        StartFolderScan(player, ScanReason::kAskedFor);
    }
};

TEST_F(FolderScanTest, WhatPlaysGoesOnAndIsFoundAgainInTheNewLibrary) {
    Player& player = StartWithDemo();
    AppState& state = player.state;
    ASSERT_NE(CurrentHandle(state.playback), 0U);
    ASSERT_TRUE(state.playback.demonstration);
    const StreamSlot playing = CurrentHandle(state.playback);

    Scan(player, {"music", "missing"});
    EXPECT_EQ(state.library.typedSongCount, 1) << "the old library, until the scan is over";
    ASSERT_TRUE(ScanEnds(player));
    EXPECT_EQ(state.library.typedSongCount, 3);
    EXPECT_EQ(state.library.missingFolders, std::vector<std::string>{folder_.At("missing")});
    EXPECT_FALSE(state.playback.demonstration);
    EXPECT_TRUE(state.selection.mixedMusic);
    ASSERT_EQ(state.favorites.list.size(), 1U);
    EXPECT_EQ(state.library.favoriteSongCount, 1);
    EXPECT_EQ(CurrentHandle(state.playback), playing);
    state.library.playlists[0].favoriteCount = 3;
    EXPECT_EQ(state.playback.item.title, "demo");
    EXPECT_EQ(PlayingSong(state), nullptr) << "another song in its place would get its favorite count";

    Scan(player, {"music", "demo"});
    ASSERT_TRUE(ScanEnds(player));
    ASSERT_NE(PlayingSong(state), nullptr);
    EXPECT_EQ(PlayingSong(state)->songPath, folder_.At("demo/Album/demo.mp3"));
    EXPECT_EQ(state.library.playlists[0].favoriteCount, 3) << "an album keeps its marks";
    EXPECT_TRUE(folder_.Has("data/musicLibraryCache.json"));
}

TEST_F(FolderScanTest, WithoutAFolderTheLibraryIsEmptyAndTheMusicEnds) {
    Player& player = StartWithDemo();
    Scan(player, {"demo"});
    ASSERT_TRUE(ScanEnds(player));
    Scan(player, {});
    ASSERT_TRUE(ScanEnds(player));
    EXPECT_EQ(player.state.library.typedSongCount, 0);
    EXPECT_FALSE(player.state.selection.mixedMusic);
    EXPECT_FALSE(folder_.Has("data/musicLibraryCache.json")) << "the songs would be back with the next start";
    EXPECT_NE(CurrentHandle(player.state.playback), 0U);
    EXPECT_FALSE(PlayNext(player.state, player.picker));
    EXPECT_EQ(CurrentHandle(player.state.playback), 0U);
    EXPECT_EQ(player.state.playback.trouble, PlaybackTrouble::kNoMusic);

    Scan(player, {"demo"});
    ASSERT_TRUE(ScanEnds(player));
    EXPECT_NE(CurrentHandle(player.state.playback), 0U) << "music again, at once";
}

TEST_F(FolderScanTest, WhatWasDroppedPlaysOnThroughAScan) {
    Player& player = StartWithDemo();
    folder_.Write("drop/one.mp3", ToneWav(300.0, 100.0));
    PlayFiles(player, {folder_.At("drop")});
    PollPlayer(player);
    Scan(player, {"music"});
    ASSERT_TRUE(ScanEnds(player));
    ASSERT_NE(PlayingSong(player.state), nullptr);
    EXPECT_EQ(PlayingSong(player.state)->songPath, folder_.At("drop/one.mp3"));
    EXPECT_TRUE(IsQueuedSongPlaying(player.state));
    EXPECT_EQ(player.state.library.typedSongCount, 3);
}

TEST_F(FolderScanTest, NewMusicDoesNotStartWhatTheUserHasStopped) {
    Player& player = StartWithDemo();
    StopMusic(player);
    folder_.Write("music/C/four.mp3", ToneWav(300.0, 100.0));
    Scan(player, {"music"});
    ASSERT_TRUE(ScanEnds(player));
    EXPECT_EQ(player.state.library.typedSongCount, 4);
    EXPECT_EQ(CurrentHandle(player.state.playback), 0U);
    EXPECT_EQ(player.state.playback.next, nullptr);
}

TEST_F(FolderScanTest, ALaterChangeAndTheEndOfTheProgramGiveAScanUp) {
    Player& player = StartWithDemo();
    Scan(player, {"demo"});
    Scan(player, {"music"});
    ASSERT_TRUE(ScanEnds(player));
    EXPECT_EQ(player.state.library.typedSongCount, 3);

    Scan(player, {"demo"});
    SaveAndShutdown(player);
    EXPECT_FALSE(SongsFoundByScan(player));
    EXPECT_EQ(player.state.library.typedSongCount, 3);
    EXPECT_EQ(StartWithDemo().state.library.typedSongCount, 1) << "the next start scans what was configured";
}

}  // namespace
}  // namespace hullrider
