// Starts whole players on folders of the test's own, without a front, and looks at what they play and leave behind.
#include "app/startup.h"
#include "app/heartbeat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include "app/folder_scan.h"
#include "app/heartbeat.h"
#include "app/settings_file.h"
#include "app/shutdown.h"
#include "app/simulate.h"
#include "input/hotkey_file.h"
#include "library/favorites.h"
#include "platform/message_box.h"
#include "playback/pick.h"
#include "playback/stream_slots.h"
#include "playback/volume.h"
#include "tests/console_capture.h"
#include "tests/eventually.h"
#include "tests/inline_workers.h"
#include "tests/temporary_folder.h"
#include "tests/tone_wav.h"

namespace hullrider {
namespace {

using nlohmann::json;

class WorkingFolderGuard {
public:
    explicit WorkingFolderGuard(const std::filesystem::path& folder) : before_(std::filesystem::current_path()) {
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
    }
    ~WorkingFolderGuard() { std::filesystem::current_path(before_); }
    WorkingFolderGuard(const WorkingFolderGuard&) = delete;
    WorkingFolderGuard& operator=(const WorkingFolderGuard&) = delete;

private:
    std::filesystem::path before_;
};

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

    // Until the scan that goes on beside the music is over.
    Player& Start(RunOptions options = {}, const std::string& companionFolder = {}) {
        Player& player = Begin(std::move(options), companionFolder);
        EXPECT_TRUE(ScanEnds(player));
        return player;
    }

    static bool ScanEnds(Player& player) {
        return Eventually([&] {
            PollFolderScan(player);
            return !SongsFoundByScan(player);
        });
    }

    Player& Begin(RunOptions options = {}, const std::string& companionFolder = {}) {
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

    void ConfigureMusic(const std::vector<std::string>& folders = {"music"}) {
        Settings settings;
        for (const std::string& name : folders) settings.directoryPaths.push_back(folder_.At(name));
        folder_.Write("data/MusicSettings.json", SettingsText(settings));
    }

    size_t TimesPrinted(const std::string& text) const {
        size_t times = 0;
        for (size_t at = output_.find(text); at != std::string::npos; at = output_.find(text, at + 1)) ++times;
        return times;
    }

    InlineWorkers inline_;
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

    Player& loading = Begin();
    EXPECT_EQ(loading.state.library.typedSongCount, 2);  // the cache leaves paths outside ASCII out
    EXPECT_EQ(loading.state.library.totalSongs, 0);
    EXPECT_TRUE(ScanEnds(loading));
    EXPECT_EQ(loading.state.library.typedSongCount, 3);
    Stop(loading);
    EXPECT_FALSE(Printed("Updating music library from directories..."));
    EXPECT_EQ(TimesPrinted("Successfully saved cache to "), 1U) << "at the end; nothing in it had changed before";
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

// What the cache has of the configured folders plays before any of them has been looked at.
TEST_F(StartupTest, TheCacheServesAtOnceWhateverTheFoldersAreLike) {
    folder_.Write("music/Album/Inner/four.flac", "x");
    folder_.Write("other/Album/five.flac", "x");
    folder_.Write("accents/\xC3\x84/six.flac", "x");
    std::filesystem::create_directories(folder_.Path() / "empty");
    const struct {
        std::vector<std::string> folders, later;
        int32_t atOnce, afterTheScan;
    } table[] = {
        {{"music"}, {"music"}, 2, 3},
        {{"music", "music/Album"}, {"music", "music/Album"}, 3, 4},
        {{"music", "music"}, {"music", "music"}, 4, 6},
        {{"music", "empty"}, {"music", "empty"}, 2, 3},
        {{"music", "accents"}, {"music", "accents"}, 2, 4},
        {{"music"}, {"music", "other"}, 2, 4},
        {{"music", "other"}, {"other"}, 1, 1},
        {{"other"}, {"music"}, 0, 3},
    };
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

TEST_F(StartupTest, ALibraryLeftOverInTheCacheStaysWithoutAnyFolder) {
    ConfigureMusic();
    Stop(Start());
    ConfigureMusic({});
    Player& player = Start();
    EXPECT_EQ(player.state.library.typedSongCount, 2);
    EXPECT_FALSE(player.state.selection.mixedMusic);
    Stop(player);
}

TEST_F(StartupTest, WhatCameAndWentIsNoticedBesideTheMusic) {
    const std::string tone = folder_.Write("music/Album/tone.mp3", ToneWav(400.0, 100.0));
    ConfigureMusic();
    Stop(Start());
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
    ASSERT_TRUE(ScanEnds(player));
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

TEST_F(StartupTest, ADriveThatIsAwayKeepsItsSongsUntilTheUserAsksForARescan) {
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

TEST_F(StartupTest, MusicInTheWorkingFolderServesWhoHasConfiguredNoneOrNoneThatIsThere) {
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

TEST_F(StartupTest, FilesInTheWorkingFolderServeWhereTheDataFolderHasNone) {
    const WorkingFolderGuard guard(folder_.Path() / "program");
    Settings settings;
    settings.historyDepth = 7;
    folder_.Write("program/MusicSettings.json", SettingsText(settings));
    folder_.Write("program/favorite.json", R"({"favorites":[{"songPath":"/a.mid"}]})");
    folder_.Write("program/hotkeyConfig.json", "[]");
    for (const int32_t expected : {7, 8}) {
        Player& player = Start();
        EXPECT_EQ(player.state.settings.historyDepth, expected);
        EXPECT_EQ(player.state.favorites.list.size(), 1U);
        EXPECT_TRUE(player.hotkeys.empty());
        player.state.settings.historyDepth = 8;
        Stop(player);
        EXPECT_FALSE(folder_.Has("data/hotkeyConfig.json")) << "only its window saves it";
        EXPECT_EQ(StateFile("favorite.json")["favorites"].size(), 1U);
    }
    EXPECT_EQ(folder_.Read("program/MusicSettings.json"), SettingsText(settings));
}

// The last words on each file, in the order in which they were said.
std::string OrderIn(const std::string& lines, const std::vector<std::string>& names) {
    std::vector<std::pair<size_t, std::string>> places;
    for (const std::string& name : names) places.emplace_back(lines.find(name), name);
    std::sort(places.begin(), places.end());
    std::string order;
    for (const auto& [place, name] : places) order += name + (place == std::string::npos ? " (never) " : " ");
    return order;
}

TEST_F(StartupTest, FilesAreLoadedAndSavedInTheirOrder) {
    for (const char* name : {"Sonorant_Stats.json", "musicLibraryCache.json", "MusicLibraryPlayCount.json",
                             "config.json", "MusicSettings.json", "Song History.json", "favorite.json"}) {
        folder_.Write(std::string("data/") + name, "{");
    }
    Player& player = Begin();
    const std::string loading = testing::internal::GetCapturedStderr();
    testing::internal::CaptureStderr();
    EXPECT_EQ(OrderIn(loading, {"Song History.json", "favorite.json", "MusicSettings.json", "config.json",
                                "MusicLibraryPlayCount.json", "Sonorant_Stats.json"}),
              "Sonorant_Stats.json MusicLibraryPlayCount.json config.json MusicSettings.json Song History.json "
              "favorite.json ");
    EXPECT_TRUE(ScanEnds(player));
    std::filesystem::remove_all(folder_.Path() / "data");
    player.state.library.playlists.clear();
    Stop(player);
    EXPECT_EQ(OrderIn(errors_, {"Song History.json", "favorite.json", "MusicSettings.json",
                                "MusicLibraryPlayCount.json", "Sonorant_Stats.json", "No valid data to save"}),
              "Sonorant_Stats.json MusicSettings.json MusicLibraryPlayCount.json No valid data to save favorite.json "
              "Song History.json ");
}

TEST_F(StartupTest, EndedInItsMidstItSavesWhatItHasAndGoesNoFurther) {
    ConfigureMusic();
    const std::string favorites = R"({"favorites":[{"songPath":"/a.mid"}]})";
    const std::string config = json{{"hullriderPath", folder_.At("game")}}.dump();
    folder_.Write("data/favorite.json", favorites);
    folder_.Write("data/config.json", config);
    folder_.Write("game/MusicRunning.txt", "yes");
    const std::string settings = folder_.Read("data/MusicSettings.json");
    static Player* ending = nullptr;
    SetErrorBoxHandler([](std::string_view) { SaveAndShutdown(*ending); });
    player_ = std::make_unique<Player>();
    ending = player_.get();
    ending->options.dataDir = folder_.At("data");
    ending->options.output.kind = OutputKind::kNull;
    ending->programFolder = folder_.Text();
    const ConsoleCapture console;
    StartPlayer(*ending);
    EXPECT_TRUE(ending->shutDown);
    EXPECT_EQ(StateFile("Sonorant_Stats.json")["starts"], 1);
    EXPECT_EQ(folder_.Read("game/MusicRunning.txt"), "no");
    EXPECT_EQ(folder_.Read("data/MusicSettings.json"), settings);
    EXPECT_EQ(folder_.Read("data/favorite.json"), favorites);
    EXPECT_FALSE(SongsFoundByScan(*ending));
    EXPECT_EQ(CurrentHandle(ending->state.playback), 0U);
}

TEST_F(StartupTest, HotkeysAreReadAgainAfterTheSettings) {
    const std::string keys = HotkeyConfigText(HotkeyBindings(3));
    folder_.Write("data/hotkeyConfig.json", keys);
    Player player;
    player.options.dataDir = folder_.At("data");
    player.options.output.kind = OutputKind::kNull;
    player.takeHotkeys = [&] {
        EXPECT_EQ(player.hotkeys.size(), 3U);
        folder_.Write("data/hotkeyConfig.json", HotkeyConfigText(HotkeyBindings(5)));
    };
    const ConsoleCapture console;
    StartPlayer(player);
    EXPECT_EQ(player.hotkeys.size(), 5U);
    SaveAndShutdown(player);
}

TEST_F(StartupTest, TheUsersSoundFontFolderStaysConfiguredWhileItsDriveIsAway) {
    SetErrorBoxHandler([](std::string_view) {});
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
    EXPECT_EQ(favoritesAfter(R"({"favorites":[]})"), 0);  // and does not bring back what is no favorite any more
    EXPECT_EQ(favoritesAfter("lost"), 0);
}

TEST_F(StartupTest, MarksInTheCacheAreTakenOverBeforeAScanChangesTheLibrary) {
    ConfigureMusic();
    Player& player = Start();
    ASSERT_EQ(player.state.library.playlists.size(), 2U);
    const int32_t at = player.state.library.playlists[0].albumName == "Album" ? 0 : 1;
    SetFavoriteCount(player.state.favorites, player.state.library, {at, 0}, 4);
    Stop(player);
    std::filesystem::remove(folder_.Path() / "data" / "favorite.json");
    folder_.Write("music/New/five.flac", "x");
    Player& again = Start();
    EXPECT_EQ(again.state.library.typedSongCount, 4);
    EXPECT_EQ(again.state.library.favoriteSongCount, 1);
    Stop(again);
    EXPECT_EQ(StateFile("favorite.json")["favorites"][0]["favoriteCount"], 4);
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

TEST_F(StartupTest, TheCompanionEditionsMixIsTakenWithoutMusicFoldersOnly) {
    Settings settings;
    settings.rawMIDI = settings.rawMP3 = settings.rawRadio = settings.rawTracker = 7;
    for (const bool hasFolder : {false, true}) {
        settings.directoryPaths.clear();
        if (hasFolder) settings.directoryPaths.push_back(folder_.At("music"));
        folder_.Write("data/MusicSettings.json", SettingsText(settings));
        Stop(Start({}, folder_.At("nowhere")));
        const json saved = StateFile("MusicSettings.json");
        EXPECT_EQ(saved["rawMIDI"], hasFolder ? 7 : 50);
        EXPECT_EQ(saved["rawMP3"], hasFolder ? 7 : 50);
        EXPECT_EQ(saved["rawRadio"], hasFolder ? 7 : 20);
        EXPECT_EQ(saved["rawTracker"], hasFolder ? 7 : 50);
    }
}

TEST_F(StartupTest, TheStandardEditionWritesTheGamesMarkerAndNothingElse) {
    folder_.Write("data/config.json", json{{"hullriderPath", folder_.At("game")}}.dump());
    folder_.Write("game/commands.txt", "VOL 0.25\n");
    ConfigureMusic();
    Player& player = Start();
    EXPECT_EQ(folder_.Read("game/MusicRunning.txt"), "yes");
    PollPlayer(player);
    Stop(player);
    EXPECT_EQ(folder_.Read("game/MusicRunning.txt"), "no");
    EXPECT_EQ(folder_.Read("game/commands.txt"), "VOL 0.25\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path() / "game"), {}), 2);
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
    EXPECT_EQ(left, std::vector<std::string>{"MusicSettings.json"});
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
