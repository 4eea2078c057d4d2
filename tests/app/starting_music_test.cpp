// Which music a player starts with, and what its scan of the folders finds beside it.
#include <filesystem>

#include "playback/pick.h"
#include "playback/stream_slots.h"
#include "tests/app/whole_player.h"
#include "tests/app/working_folder.h"

namespace hullrider {
namespace {

class StartingMusic : public WholePlayerTest {
protected:
    StartingMusic() { WriteMusic(); }
};

TEST_F(StartingMusic, ALostCacheHealsFromTheConfiguredFoldersAndServesTheNextStart) {
    ConfigureMusic();
    Player& scanning = Start();
    EXPECT_EQ(scanning.state.library.typedSongCount, 3);
    EXPECT_EQ(scanning.state.weights.midi, 50);  // the weights of the library as it is now, not as it was found
    EXPECT_EQ(scanning.state.weights.radio, 0);
    Stop(scanning);
    EXPECT_EQ(TimesPrinted("Updating music library from directories..."), 1);
    EXPECT_GE(TimesPrinted("Successfully saved cache to "), 1);

    Player& loading = Begin();
    EXPECT_EQ(loading.state.library.typedSongCount, 2);  // the cache leaves paths outside ASCII out
    EXPECT_EQ(loading.state.library.totalSongs, 0);
    EXPECT_TRUE(ScanEnds(loading));
    EXPECT_EQ(loading.state.library.typedSongCount, 3);
    Stop(loading);
    EXPECT_EQ(TimesPrinted("Updating music library from directories..."), 0);
    EXPECT_EQ(TimesPrinted("Successfully saved cache to "), 1) << "at the end; nothing in it had changed before";
    EXPECT_EQ(StateFile("MusicSettings.json")["directoryPaths"], json::array({folder_.At("music")}));
}

TEST_F(StartingMusic, MusicForOneRunLeavesTheUsersLibraryAlone) {
    ConfigureMusic();
    Stop(Start());
    const std::string cache = folder_.Read("data/musicLibraryCache.json");

    folder_.Write("other/Album/four.flac", "x");
    RunOptions options;
    options.music = {folder_.At("other")};
    Player& player = Start(options);
    EXPECT_EQ(player.state.library.typedSongCount, 1);
    Stop(player);
    EXPECT_EQ(folder_.Read("data/musicLibraryCache.json"), cache);
    EXPECT_EQ(StateFile("MusicSettings.json")["directoryPaths"], json::array({folder_.At("music")}));
}

TEST_F(StartingMusic, FallbackMusicServesOnlyWhoHasConfiguredNone) {
    folder_.Write("demo/Album/four.flac", "x");
    RunOptions options;
    options.fallbackMusic = folder_.At("demo");
    Player& player = Start(options);
    EXPECT_EQ(player.state.library.typedSongCount, 1);
    EXPECT_TRUE(player.state.playback.demonstration);
    Stop(player);
    EXPECT_EQ(StateFile("MusicSettings.json")["directoryPaths"], json::array());
    EXPECT_EQ(StateFile("MusicSettings.json")["songPlayDurationMin"], 45);

    ConfigureMusic();
    Player& configured = Start(options);
    EXPECT_EQ(configured.state.library.typedSongCount, 3);
    EXPECT_FALSE(configured.state.playback.demonstration);
    Stop(configured);

    // Settings that got lost must not cost the library's cache too.
    const std::string cache = folder_.Read("data/musicLibraryCache.json");
    folder_.Write("data/MusicSettings.json", "lost");
    Player& lost = Start(options);
    EXPECT_TRUE(lost.state.playback.demonstration);
    Stop(lost);
    EXPECT_EQ(folder_.Read("data/musicLibraryCache.json"), cache);
}

// What the cache has of the configured folders plays before any of them has been looked at.
TEST_F(StartingMusic, TheCacheServesAtOnceWhateverTheFoldersAreLike) {
    folder_.Write("music/Album/Inner/four.flac", "x");
    folder_.Write("other/Album/five.flac", "x");
    folder_.Write("accents/\xC3\x84/six.flac", "x");
    std::filesystem::create_directories(folder_.Path() / "empty");
    const struct {
        std::vector<std::string> folders, later;
        int32_t atOnce, afterTheScan;
    } table[] = {{{"music"}, {"music"}, 2, 3},
                 {{"music", "music/Album"}, {"music", "music/Album"}, 3, 4},
                 {{"music", "music"}, {"music", "music"}, 4, 6},
                 {{"music", "empty"}, {"music", "empty"}, 2, 3},
                 {{"music", "accents"}, {"music", "accents"}, 2, 4},
                 {{"music"}, {"music", "other"}, 2, 4},
                 {{"music", "other"}, {"other"}, 1, 1},
                 {{"other"}, {"music"}, 0, 3},
                 {{"music"}, {}, 2, 2}};
    for (const auto& row : table) {
        ConfigureMusic(row.folders);
        Stop(Start());
        ConfigureMusic(row.later);
        Player& player = Begin();
        const int32_t atOnce = player.state.library.typedSongCount;
        // Without any song it waits a moment for the scan.
        EXPECT_TRUE(atOnce == row.atOnce || row.atOnce == 0) << testing::PrintToString(row.later) << ' ' << atOnce;
        EXPECT_TRUE(ScanEnds(player));
        EXPECT_EQ(player.state.library.typedSongCount, row.afterTheScan) << testing::PrintToString(row.later);
        Stop(player);
    }
}

TEST_F(StartingMusic, WhatCameAndWentIsNoticedBesideTheMusic) {
    const std::string tone = folder_.Write("music/Album/tone.mp3", ToneWav(400.0, 100.0));
    ConfigureMusic();
    Player& before = Start();
    before.state.playback.heardSince -= std::chrono::seconds(6);
    Stop(before);
    folder_.Write("music/New/seven.flac", "x");
    const json favorites = {{"favorites", {{{"songPath", folder_.At("music/New/seven.flac")}}}}};
    folder_.Write("music/New/favorite.json", favorites.dump());
    folder_.Write("music/Album/favorite.json", json{{"favorites", {{{"songPath", tone}}}}}.dump());
    std::filesystem::remove(folder_.Path() / "music" / "Album" / "two.mid");
    Player& player = Begin();
    const AppState& state = player.state;
    const StreamSlot playing = CurrentHandle(state.playback);
    ASSERT_NE(playing, 0U);
    EXPECT_EQ(state.library.midiSongCount, 1);
    player.state.playback.heardSince -= std::chrono::seconds(6);
    ASSERT_TRUE(ScanEnds(player));
    PollPlayer(player);
    EXPECT_EQ(state.library.midiSongCount, 0);
    EXPECT_EQ(state.library.mp3SongCount, 3);
    EXPECT_EQ(CurrentHandle(state.playback), playing);
    ASSERT_NE(PlayingSong(state), nullptr);
    EXPECT_EQ(PlayingSong(state)->songPath, tone);
    EXPECT_EQ(PlayingSong(state)->playCount, 2);
    ASSERT_EQ(state.favorites.list.size(), 1U) << "of an album that is known, the user may have taken them out since";
    EXPECT_EQ(state.favorites.list[0].songPath, folder_.At("music/New/seven.flac"));
    EXPECT_NE(folder_.Read("data/musicLibraryCache.json").find("seven.flac"), std::string::npos);
    Stop(player);
}

TEST_F(StartingMusic, ADriveThatIsAwayKeepsItsSongsUntilTheUserAsksForARescan) {
    folder_.Write("drive/Album/four.flac", "x");
    ConfigureMusic({"drive", "music"});
    Stop(Start());
    std::filesystem::rename(folder_.Path() / "drive", folder_.Path() / "away");
    folder_.Write("music/New/five.flac", "x");
    Player& player = Start();
    const MusicLibrary& library = player.state.library;
    EXPECT_EQ(library.typedSongCount, 5);
    EXPECT_EQ(library.playlists[0].songs[0].songPath, folder_.At("drive/Album/four.flac"));
    EXPECT_EQ(library.missingFolders, std::vector<std::string>{folder_.At("drive")});
    StartFolderScan(player, ScanReason::kFoldersChanged);
    ASSERT_TRUE(ScanEnds(player));
    EXPECT_EQ(library.typedSongCount, 5);
    StartFolderScan(player, ScanReason::kAskedFor);
    ASSERT_TRUE(ScanEnds(player));
    EXPECT_EQ(library.typedSongCount, 4);
    Stop(player);

    // It is known to be missing also where the library has nothing of it.
    Player& again = Start();
    EXPECT_EQ(again.state.library.missingFolders, std::vector<std::string>{folder_.At("drive")});
    Stop(again);
}

TEST_F(StartingMusic, MusicInTheWorkingFolderServesWhoHasConfiguredNoneOrNoneThatIsThere) {
    const WorkingFolderGuard guard(folder_.Path() / "program");
    const std::string song = folder_.Write("program/Music/Album/song.mp3", ToneWav(400.0, 30.0));
    for (const char* configured : {"", "missing"}) {
        std::filesystem::remove_all(folder_.Path() / "data");
        if (*configured != '\0') ConfigureMusic({configured});
        Player& player = Start();
        ASSERT_EQ(player.state.library.typedSongCount, 1) << configured;
        EXPECT_TRUE(player.state.selection.mixedMusic);
        EXPECT_NE(CurrentHandle(player.state.playback), 0U);
        Stop(player);
        EXPECT_TRUE(folder_.Has("data/musicLibraryCache.json"));
        EXPECT_EQ(StateFile("MusicSettings.json")["directoryPaths"].size(), *configured == '\0' ? 0U : 1U);
    }
}

}  // namespace
}  // namespace hullrider
