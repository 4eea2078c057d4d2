// Starts whole players on folders of the test's own, without a front, and looks at what they play and leave behind.
#include "app/startup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include "app/shutdown.h"
#include "app/simulate.h"
#include "platform/message_box.h"
#include "playback/volume.h"
#include "tests/temporary_folder.h"
#include "tests/tone_wav.h"

namespace hullrider {
namespace {

using nlohmann::json;

class StartupTest : public testing::Test {
protected:
    StartupTest() {
        // There is no SoundFont beside a test program.
        SetErrorBoxHandler([](std::string_view text) { EXPECT_EQ(text, "No soundfont files found."); });
        for (const char* song : {"music/Album/one.mp3", "music/Album/two.mid", "music/Z\xC3\xBCrich/three.xm"}) {
            folder_.Write(song, "not music at all");
        }
    }
    ~StartupTest() override { SetErrorBoxHandler(nullptr); }

    Player& Start(RunOptions options = {}, const std::string& companionFolder = {}) {
        player_ = std::make_unique<Player>();
        player_->companionEdition = !companionFolder.empty();
        if (player_->companionEdition) player_->programFolder = companionFolder;
        Player& player = *player_;
        options.dataDir = folder_.At("data");
        options.output.kind = OutputKind::kNull;
        player.options = options;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        StartPlayer(player);
        return player;
    }

    void Stop(Player& player) {
        SaveAndShutdown(player);
        output_ = testing::internal::GetCapturedStdout();
        errors_ = testing::internal::GetCapturedStderr();
    }

    bool Printed(const std::string& text) const { return output_.find(text) != std::string::npos; }
    json StateFile(const std::string& name) const { return json::parse(folder_.Read("data/" + name)); }

    void ConfigureMusic() {
        json settings;
        settings["directoryPaths"] = {folder_.At("music")};
        folder_.Write("data/MusicSettings.json", settings.dump());
    }

    TemporaryFolder folder_;
    std::unique_ptr<Player> player_;
    std::string output_, errors_;
};

TEST_F(StartupTest, TheFirstStartMakesItsFolderAndLeavesItsFiles) {
    Player& player = Start();
    EXPECT_TRUE(player.state.library.playlists.empty());
    EXPECT_EQ(player.state.playback.trouble, PlaybackTrouble::kNoMusic);
    Stop(player);
    EXPECT_EQ(StateFile("MusicSettings.json").size(), 44U);
    EXPECT_EQ(StateFile("config.json").size(), 2U);
    EXPECT_FALSE(folder_.Has("data/musicLibraryCache.json"));  // an empty library is never written
    EXPECT_TRUE(Printed("Music library cache is empty or couldn't be loaded."));
    EXPECT_TRUE(Printed("No directory paths available to update music library."));
    EXPECT_TRUE(Printed("No audiobooks to save. Skipping save operation."));
}

TEST_F(StartupTest, ALostCacheHealsFromTheConfiguredFoldersAndServesTheNextStart) {
    ConfigureMusic();
    Player& scanning = Start();
    EXPECT_EQ(scanning.state.library.typedSongCount, 3);
    EXPECT_EQ(scanning.state.weights.midi, 50);  // the weights of the library as it is now, not as it was found
    EXPECT_EQ(scanning.state.weights.radio, 0);
    Stop(scanning);
    EXPECT_TRUE(Printed("Updating music library from directories..."));
    EXPECT_TRUE(Printed("Successfully saved cache to "));

    Player& loading = Start();
    EXPECT_EQ(loading.state.library.typedSongCount, 2);  // the cache leaves paths outside ASCII out
    EXPECT_EQ(loading.state.library.totalSongs, 0);
    Stop(loading);
    EXPECT_FALSE(Printed("Updating music library from directories..."));
    EXPECT_EQ(StateFile("MusicSettings.json")["directoryPaths"], json::array({folder_.At("music")}));
}

TEST_F(StartupTest, MusicForOneRunLeavesTheUsersLibraryAlone) {
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

TEST_F(StartupTest, FallbackMusicServesOnlyWhoHasConfiguredNone) {
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

TEST_F(StartupTest, ACacheOfOtherFoldersThanTheConfiguredOnesIsScannedAnew) {
    ConfigureMusic();
    Stop(Start());
    folder_.Write("more/Album/four.flac", "x");
    json settings = StateFile("MusicSettings.json");
    const auto songsWith = [&](const json& directories) {
        settings["directoryPaths"] = directories;
        folder_.Write("data/MusicSettings.json", settings.dump());
        Player& player = Start();
        const int32_t songs = player.state.library.typedSongCount;
        Stop(player);
        return songs;
    };
    EXPECT_EQ(songsWith({folder_.At("music"), folder_.At("more")}), 4);
    EXPECT_EQ(songsWith({folder_.At("more")}), 1);
    // A drive that is not plugged in keeps its songs.
    std::filesystem::rename(folder_.Path() / "more", folder_.Path() / "away");
    EXPECT_EQ(songsWith({folder_.At("more")}), 1);
}

TEST_F(StartupTest, FavoritesLastFromRunToRunAndTakeInWhatAScanFinds) {
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
    EXPECT_EQ(favoritesAfter("lost"), 1);  // the library's cache has the mark too
    EXPECT_EQ(StateFile("favorite.json")["favorites"][0]["favoriteCount"], 2);
    EXPECT_EQ(favoritesAfter(R"({"favorites":[]})"), 0);  // and does not bring back what is no favourite any more
    EXPECT_EQ(favoritesAfter("lost"), 0);
}

TEST_F(StartupTest, TheCompanionEditionTakesOverTheGamesMusicAndTellsIt) {
    const std::string song = folder_.Write("game/Tonewell/Mp3 Songs/Album/five.mp3", "x");
    const std::string font = folder_.Write("game/Tonewell/SoundFonts/font.sf2", "not one");
    SetErrorBoxHandler([](std::string_view text) { EXPECT_EQ(text, "Failed to load the selected soundfont."); });
    Player& player = Start({}, folder_.At("game/player"));
    EXPECT_EQ(folder_.Read("game/MusicRunning.txt"), "yes");
    EXPECT_EQ(folder_.Read("game/MusicLibraryCache.txt"), song + "\n");
    EXPECT_TRUE(player.state.shell.companionExport && player.state.shell.startupFinished);
    EXPECT_EQ(player.state.soundFonts.soundFontFiles, std::vector<std::string>{font});
    Stop(player);
    EXPECT_TRUE(Printed("Current directory: "));
    EXPECT_EQ(folder_.Read("game/MusicRunning.txt"), "no");
    EXPECT_EQ(StateFile("MusicSettings.json")["directoryPaths"], json::array({folder_.At("game/Tonewell/Mp3 Songs")}));
    EXPECT_EQ(StateFile("config.json")["hullriderPath"], folder_.At("game"));
}

TEST_F(StartupTest, ARecordingThatCannotBeWrittenEndsTheStart) {
    Player player;
    player.options.dataDir = folder_.At("data");
    player.options.output = {OutputKind::kWav, folder_.At("missing/heard.wav")};
    EXPECT_THROW(StartPlayer(player), std::runtime_error);
}

TEST_F(StartupTest, WhatWasHeardIsKeptFromRunToRunAndThroughARescan) {
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
        EXPECT_EQ(playCount(player), run);
        EXPECT_EQ(player.state.history.records.size(), static_cast<size_t>(run));
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        Stop(player);
        EXPECT_EQ(StateFile("MusicLibraryPlayCount.json")["playCounts"][tone], run);
        EXPECT_EQ(StateFile("Sonorant_Stats.json")["starts"], run);
        EXPECT_EQ(StateFile("Sonorant_Stats.json")["mp3"]["count"], run);
        EXPECT_GE(StateFile("Sonorant_Stats.json")["mp3"]["seconds"], 0.05 * run);
        const json last = StateFile("Song History.json")["songs"].back();
        EXPECT_EQ(last["path"], tone);
        EXPECT_GT(last["playedSec"], 0.0);
        EXPECT_GT(last["startedAt"], 1'700'000'000);
        std::filesystem::remove(folder_.Path() / "data" / "musicLibraryCache.json");
    }
}

TEST_F(StartupTest, TheUsersOwnVolumeLastsWhateverIsMadeOfIt) {
    folder_.Write("data/ShellOptions.json", R"({"equalLoudness": 1, "width": 1e9, "closeToTray": true})");
    {
        Player& player = Start();
        EXPECT_FALSE(player.state.playback.realTimeVolume);
        EXPECT_EQ(player.state.shell.options.width, 0);
        SetVolumeLevel(player.state, 0.25F);
        SetLoudnessFollowing(player.state, true);
        SetVolumeLevel(player.state, 0.375F);
        ApplyVolume(player.state);
        Stop(player);
    }
    {
        Player& player = Start();
        EXPECT_TRUE(player.state.playback.realTimeVolume);
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

TEST_F(StartupTest, TheSimulationTellsOfTheConfiguredMusicAndWritesNothing) {
    folder_.Write("music/Album/tone.mp3", ToneWav(400.0, 20.0));
    ConfigureMusic();
    RunOptions options;
    options.dataDir = folder_.At("data");
    options.simulate = 300;
    testing::internal::CaptureStdout();
    const std::string text = SimulationText(options);
    testing::internal::GetCapturedStdout();
    EXPECT_NE(text.find("Simulated 300 songs of a library of 4."), std::string::npos) << text;
    // Only the tone can be played. The other kinds are promised and give way to it.
    EXPECT_NE(text.find("Audio files             100.00 %"), std::string::npos) << text;
    EXPECT_NE(text.find("Repeats within the last 20 songs: 299"), std::string::npos) << text;
    EXPECT_NE(text.find("Mean play time: 18.0 s, by the lengths of 4 files"), std::string::npos) << text;
    EXPECT_NE(text.find("Songs an hour: 200.0"), std::string::npos) << text;
    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path() / "data")) {
        left.push_back(entry.path().filename().string());
    }
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (std::vector<std::string>{"MusicSettings.json", "MusicSettings.json.bad"}));
}

TEST_F(StartupTest, StateFilesFullOfJunkStopNothingAndAreKept) {
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
