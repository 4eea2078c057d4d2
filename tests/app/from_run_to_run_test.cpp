// What a player takes from one run to the next.
#include <chrono>

#include "library/favorites.h"
#include "playback/volume.h"
#include "tests/app/whole_player.h"

namespace hullrider {
namespace {

class FromRunToRun : public WholePlayerTest {
protected:
    FromRunToRun() { WriteMusic(); }
};

TEST_F(FromRunToRun, FavoritesLastAndTakeInWhatAScanFinds) {
    ConfigureMusic();
    const std::string song = folder_.At("music/Album/one.mp3");
    const json found = {{"favorites", {{{"songPath", song}, {"favoriteCount", 2}}}}};
    folder_.Write("music/Album/Favorite.json", found.dump());
    folder_.Write("data/favorite.json", R"({"favorites":[{"songPath":"/elsewhere.mid","favoriteCount":3}]})");
    Player& scanning = Start();
    EXPECT_EQ(scanning.state.library.favoriteSongCount, 1);
    EXPECT_EQ(scanning.state.weights.favorites, 50);
    Stop(scanning);
    ASSERT_EQ(StateFile("favorite.json")["favorites"].size(), 2U);

    const auto favoritesAfter = [&](const std::string& file) {
        folder_.Write("data/favorite.json", file);
        Player& player = Start();
        const int32_t favorites = player.state.library.favoriteSongCount;
        Stop(player);
        return favorites;
    };
    const std::string kept = folder_.Read("data/favorite.json");
    EXPECT_EQ(favoritesAfter(kept), 1);
    folder_.Write("music/New/five.flac", "x");  // a scan that changes the library, whose cache has the mark too
    EXPECT_EQ(favoritesAfter("lost"), 1);
    EXPECT_EQ(StateFile("favorite.json")["favorites"][0]["favoriteCount"], 2);
    EXPECT_EQ(favoritesAfter(R"({"favorites":[]})"), 0);  // and does not bring back what is no favorite any more
    EXPECT_EQ(favoritesAfter("lost"), 0);

    // After a crash the list may be newer than the marks in the cache.
    folder_.Write("data/favorite.json", kept);
    Player& player = Begin();
    EXPECT_EQ(player.state.library.favoriteSongCount, 1);
    EXPECT_EQ(player.state.weights.favorites, 50) << "drawn from the start, not only after a scan";
}

TEST_F(FromRunToRun, WhatWasHeardIsKeptThroughARescan) {
    ConfigureMusic();
    const std::string tone = folder_.Write("music/Album/tone.mp3", ToneWav(400.0, 40.0));
    const auto playCount = [&](const Player& player) {
        for (const Playlist& playlist : player.state.library.playlists) {
            for (const Song& song : playlist.songs) {
                if (song.songPath == tone) return song.playCount;
            }
        }
        return -1;
    };
    for (int run = 1; run <= 3; ++run) {
        Player& player = Start();
        EXPECT_EQ(playCount(player), run - 1);
        EXPECT_EQ(player.state.history.records.size(), static_cast<size_t>(run));
        player.state.playback.heardSince -= std::chrono::seconds(6);
        Stop(player);
        EXPECT_EQ(StateFile("MusicLibraryPlayCount.json")["playCounts"][tone], run);
        EXPECT_EQ(StateFile("Sonorant_Stats.json")["starts"], run);
        EXPECT_EQ(StateFile("Sonorant_Stats.json")["mp3"]["count"], run);
        EXPECT_GE(StateFile("Sonorant_Stats.json")["mp3"]["seconds"], 6.0 * run);
        const json last = StateFile("Song History.json")["songs"].back();
        EXPECT_EQ(last["path"], tone);
        EXPECT_GE(last["playedSec"], 6.0);
        EXPECT_GT(last["startedAt"], 1'700'000'000);
        std::filesystem::remove(folder_.Path() / "data" / "musicLibraryCache.json");
    }
}

TEST_F(FromRunToRun, TheUsersOwnVolumeLastsWhateverIsMadeOfIt) {
    folder_.Write("data/ShellOptions.json", R"({"equalLoudness": 1, "width": 1e9, "closeToTray": true})");
    {
        Player& player = Start();
        EXPECT_FALSE(player.state.playback.volume->realTimeVolume);
        EXPECT_EQ(player.state.shell.options.width, 0);
        SetVolumeLevel(player.state, 0.25F);
        SetLoudnessFollowing(player.state, true);
        SetVolumeLevel(player.state, 0.375F);
        ApplyVolume(player.state);
        Stop(player);
    }
    {
        Player& player = Start();
        EXPECT_TRUE(player.state.playback.volume->realTimeVolume);
        EXPECT_EQ(player.state.playback.volume->targetRms, TargetRmsOf(0.375F)) << "the first song follows it already";
        EXPECT_TRUE(player.state.shell.options.closesToTray);
        EXPECT_EQ(UserVolume(player.state), 0.375F);
        SetLoudnessFollowing(player.state, false);
        EXPECT_EQ(player.state.settings.volumeLevel, 0.375F);
        ToggleHighLowVolume(player.state);
        EXPECT_NE(player.state.settings.volumeLevel, 0.375F);
        Stop(player);
    }
    EXPECT_EQ(StateFile("MusicSettings.json")["volumeLevel"], 0.375);
    {
        Player& player = Start();
        ToggleHighLowVolume(player.state);
        SetVolumeLevel(player.state, 0.625F);
        Stop(player);
    }
    EXPECT_EQ(StateFile("MusicSettings.json")["volumeLevel"], 0.625);
    EXPECT_FALSE(StateFile("ShellOptions.json")["equalLoudness"].get<bool>());
}

TEST_F(FromRunToRun, TheUsersSoundFontFolderStaysConfiguredWhileItsDriveIsAway) {
    const std::string beside = folder_.Write("program/Soundfonts/font.sf2", "not one");
    const auto configuredAfter = [&](const std::string& configured) {
        folder_.Write("data/config.json", json{{"soundFontDirectoryPath", configured}}.dump());
        Player& player = Start({}, folder_.At("program"));
        EXPECT_EQ(player.state.soundFonts.soundFontFiles, std::vector<std::string>{beside});
        Stop(player);
        return StateFile("config.json")["soundFontDirectoryPath"];
    };
    EXPECT_EQ(configuredAfter(""), folder_.At("program/Soundfonts"));
    EXPECT_EQ(configuredAfter(folder_.At("away")), folder_.At("away"));

    const std::string own = folder_.Write("fonts/own.sf2", "not one");
    folder_.Write("data/config.json", json{{"soundFontDirectoryPath", folder_.At("fonts")}}.dump());
    EXPECT_EQ(Start({}, folder_.At("program")).state.soundFonts.soundFontFiles, std::vector<std::string>{own});
}

TEST_F(FromRunToRun, StateFilesFullOfJunkStopNothingAndAreKept) {
    const std::string junk[] = {"",
                                "{",
                                "[1,2",
                                "null",
                                "{\"playlists\":7,\"directoryPaths\":{}}",
                                std::string(100000, '['),
                                std::string("\xFF\xFE\0\0", 4)};
    for (const std::string& text : junk) {
        for (const char* name : {"MusicSettings.json", "config.json", "musicLibraryCache.json", "favorite.json",
                                 "Song History.json", "Sonorant_Stats.json", "MusicLibraryPlayCount.json"}) {
            folder_.Write(std::string("data/") + name, text);
        }
        Stop(Start());
        EXPECT_EQ(StateFile("MusicSettings.json").size(), 44U) << text.substr(0, 20);
        EXPECT_EQ(folder_.Read("data/MusicSettings.json.bad"), text) << text.substr(0, 20);
        EXPECT_EQ(folder_.Read("data/favorite.json.bad"), text) << text.substr(0, 20);
        EXPECT_EQ(StateFile("favorite.json")["favorites"].size(), 0U) << text.substr(0, 20);
    }
}

}  // namespace
}  // namespace hullrider
