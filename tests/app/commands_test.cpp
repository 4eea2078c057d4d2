// Whole players, without a window, that are told what to do.
#include "app/commands.h"

#include <gtest/gtest.h>

#include "app/command_lines.h"
#include "app/dropped_songs.h"
#include "app/heartbeat.h"
#include "app/shutdown.h"
#include "app/startup.h"
#include "audio/bass.h"
#include "input/hotkeys.h"
#include "platform/message_box.h"
#include "playback/play_next.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "tests/console_capture.h"
#include "tests/eventually.h"
#include "tests/inline_workers.h"
#include "tests/temporary_folder.h"
#include "tests/tone_wav.h"

namespace hullrider {
namespace {

std::string errorBox;

class CommandsTest : public testing::Test {
protected:
    CommandsTest() {
        SetErrorBoxHandler([](std::string_view text) { errorBox = text; });
        for (const char* song : {"music/A/one.mp3", "music/A/two.mp3", "music/B/three.mp3"}) {
            static const std::string tone = ToneWav(440.0, 200.0);
            folder_.Write(song, tone);
        }
        player_.companionEdition = false;
        player_.options.dataDir = folder_.At("data");
        player_.options.music = {folder_.At("music")};
        player_.options.output.kind = OutputKind::kNull;
    }
    ~CommandsTest() override {
        SaveAndShutdown(player_);
        SetErrorBoxHandler(nullptr);
    }

    AppState& Start() {
        StartPlayer(player_);
        return player_.state;
    }

    bool Plays() const { return BASS_ChannelIsActive(CurrentHandle(player_.state.playback)) == BASS_ACTIVE_PLAYING; }

    const Song& Playing() const {
        const SongChoice& at = player_.state.playback.item.place;
        return player_.state.library.playlists[static_cast<size_t>(at.playlist)].songs[static_cast<size_t>(at.song)];
    }

    InlineWorkers inline_;
    TemporaryFolder folder_;
    ConsoleCapture console_;
    Player player_;
};

TEST(MainMenu, HoldsItsItemsInTheirOrder) {
    const std::pair<std::string, std::vector<std::pair<std::string, int32_t>>> expected[] = {
        {"&File", {{"Select Local Folders", 16}, {"Select Internet URL", 22}, {"Exit", 3}}},
        {"&Playback",
         {{"Play/Pause", 4},
          {"Start", 5},
          {"Stop", 6},
          {"Next Song", 7},
          {"Previous Song", 8},
          {"Next Sound Font", 13},
          {"Previous Sound Font", 14},
          {"Next Play List", 20},
          {"Previous Play List", 21}}},
        {"&Settings",
         {{"Radio", 9},
          {"Favorites", 10},
          {"Hotkeys \\ Game Controllers", 11},
          {"Display", 15},
          {"Equalizer ", 26},
          {"Custom Radio Station", 27}}},
        {"&Song Info", {{"View", 12}}},
        {"&Hullrider", {{"Play Hullrider ", 23}, {"Merge Favorites", 18}, {"Sync Music Library", 25}}},
        {"&About", {{"About Hullrider Radio", 19}}},
        {"&Update", {{"Check For Updates", 24}}},
    };
    const std::span<const MenuPopup> menu = MainMenu();
    ASSERT_EQ(menu.size(), std::size(expected));
    for (size_t i = 0; i < menu.size(); ++i) {
        EXPECT_EQ(menu[i].text, expected[i].first);
        std::vector<std::pair<std::string, int32_t>> items;
        for (const int32_t id : menu[i].commands) {
            const Command* const command = FindCommand(id);
            ASSERT_NE(command, nullptr) << id;
            items.emplace_back(command->text, id);
        }
        EXPECT_EQ(items, expected[i].second);
    }
}

TEST_F(CommandsTest, EachHotkeyDoesWhatItsLabelSays) {
    AppState& state = Start();
    const auto press = [&](int32_t action) { return RunCommand(player_, CommandOfHotkey(action)); };
    const std::string first = Playing().songPath;
    press(kNextSongKey);
    EXPECT_EQ(state.history.records.size(), 2U);
    press(kPreviousSongKey);
    EXPECT_EQ(Playing().songPath, first);
    press(kPlayPauseKey);
    EXPECT_EQ(BASS_ChannelIsActive(CurrentHandle(state.playback)), BASS_ACTIVE_PAUSED);
    press(kMediaPlayPauseKey);
    EXPECT_NE(BASS_ChannelIsActive(CurrentHandle(state.playback)), BASS_ACTIVE_PAUSED);

    state.settings.volumeLevel = 0.5F;
    press(kVolumeUpKey);
    EXPECT_NEAR(state.settings.volumeLevel, 0.55F, 1e-6);
    press(kVolumeDownKey);
    press(kVolumeDownKey);
    EXPECT_NEAR(state.settings.volumeLevel, 0.45F, 1e-6);
    press(kVolumeToggleKey);
    EXPECT_EQ(state.settings.volumeLevel, state.settings.highVolume);

    press(kFavoriteUpKey);
    press(kFavoriteUpKey);
    EXPECT_EQ(Playing().favoriteCount, 2);
    press(kFavoriteDownKey);
    EXPECT_EQ(Playing().favoriteCount, 1);

    for (const int32_t key : {kNextSoundFontKey, kPreviousSoundFontKey}) {
        errorBox.clear();
        press(key);
        EXPECT_EQ(errorBox, "No soundfont files found.");
    }
    state.selection.playMode = kPlaylistMode;
    press(kMusicHomeKey);
    EXPECT_EQ(state.selection.playMode, kLibraryMode);
    press(kNextStationKey);  // there are none
    press(kPreviousStationKey);
    EXPECT_EQ(state.selection.playMode, kLibraryMode);

    bool ended = false, shown = false;
    player_.endProgram = [&] { ended = true; };
    player_.bringToFront = [&] { shown = true; };
    press(kQuitKey);
    press(kShowPlayerKey);
    EXPECT_TRUE(ended && shown);
    EXPECT_FALSE(press(kKeyBind1Key) || press(-1) || press(12345));
}

TEST_F(CommandsTest, AStopIsSilenceUntilSomethingIsStarted) {
    AppState& state = Start();
    const int32_t starts[] = {kStartCommand,        kPlayPauseCommand,    kStopStartCommand, kNextSongCommand,
                              kPreviousSongCommand, kNextPlaylistCommand, kMusicHomeCommand};
    for (const int32_t start : starts) {
        RunCommand(player_, kNextSongCommand);  // so that there is a previous one
        RunCommand(player_, kStopCommand);
        RunCommand(player_, kStopCommand);
        EXPECT_EQ(CurrentHandle(state.playback), 0U) << start;
        state.playback.lastAttempt -= std::chrono::hours(1);
        PollPlayer(player_);
        EXPECT_EQ(CurrentHandle(state.playback), 0U) << start;
        RunCommand(player_, kFavoriteUpCommand);  // of nothing
        EXPECT_EQ(state.favorites.list.size(), 0U);
        RunCommand(player_, start);
        EXPECT_TRUE(Eventually([&] { return Plays(); })) << start;
    }
    RunCommand(player_, kStartCommand);  // also while it plays
    EXPECT_TRUE(Eventually([&] { return Plays(); }));
    SaveAndShutdown(player_);
    EXPECT_FALSE(RunCommand(player_, kNextSongCommand));
}

TEST_F(CommandsTest, WhatIsDroppedPlaysNowInThePlaceOfTheDropBefore) {
    AppState& state = Start();
    folder_.Write("drop/four.mp3", ToneWav(440.0, 60.0));
    RunCommand(player_, kStopCommand);
    EXPECT_FALSE(PlayDropped(player_, {folder_.At("data"), folder_.At("missing")}));
    EXPECT_EQ(CurrentHandle(state.playback), 0U) << "nothing has changed";
    EXPECT_EQ(state.library.playlists.size(), 2U);
    for (const char* drop : {"drop", "music/B"}) {
        ASSERT_TRUE(PlayDropped(player_, {folder_.At(drop)}));
        EXPECT_TRUE(Eventually([&] { return Plays(); }));
        EXPECT_EQ(state.library.playlists.size(), 3U);
        EXPECT_TRUE(Playing().songPath.starts_with(folder_.At(drop)));
    }
}

TEST_F(CommandsTest, LinesChangeWhatTheySay) {
    AppState& state = Start();
    Settings& settings = state.settings;
    const auto run = [&](const char* line) { RunCommandLine(player_, line); };
    run("VOL 0.25");
    EXPECT_EQ(settings.volumeLevel, 0.25F);
    run("songPlayDurationMax 77");
    run("songPlayDurationMin 33");
    run("FADE_DURATION_MS 1234");
    EXPECT_EQ(settings.songPlayDurationMax, 77);
    EXPECT_EQ(settings.songPlayDurationMin, 33);
    EXPECT_EQ(settings.FADE_DURATION_MS, 1234);
    run("rawMidi 1");
    run("rawTracker 2");
    run("rawMP3 3");
    run("rawFav 4");
    EXPECT_EQ(settings.rawMIDI, 1);
    EXPECT_EQ(settings.rawTracker, 2);
    EXPECT_EQ(settings.rawMP3, 3);
    EXPECT_EQ(state.weights.mp3, 3);
    EXPECT_EQ(state.weights.midi, 0);  // there are no MIDI songs
    EXPECT_EQ(state.weights.favorites, 0);
    run("favoriteCount 5");
    EXPECT_EQ(settings.rawFav, 4);
    EXPECT_EQ(state.weights.favorites, 4);
    ASSERT_EQ(state.favorites.list.size(), 1U);
    EXPECT_EQ(state.favorites.list[0].songPath, Playing().songPath);
    EXPECT_EQ(Playing().favoriteCount, 5);
    EXPECT_EQ(Playing().isFavorite, 1);
    run("favoriteCount -3");
    EXPECT_TRUE(state.favorites.list.empty());
    EXPECT_EQ(Playing().isFavorite, 0);
    EXPECT_EQ(state.weights.favorites, 0);

    run("SHUFFLE");
    EXPECT_FALSE(state.selection.shuffle);
    run("SHUFFLE");
    EXPECT_TRUE(state.selection.shuffle);
    for (const int32_t filter : {1, 2, 0}) {
        run("favoritesOnly");
        EXPECT_EQ(state.selection.favoritesFilter, filter);
        EXPECT_EQ(state.selection.playMode, filter + 1);
    }
    run("PLAY_SONG 1 0");
    const std::string asked = Playing().songPath;
    EXPECT_EQ(asked, state.library.playlists[1].songs[0].songPath);
    run("NEXT_SONG");
    run("PREVIOUS_SONG");
    EXPECT_EQ(Playing().songPath, asked);
    state.selection.playMode = kPlaylistMode;
    run("NEXT_PLAYLIST");
    EXPECT_EQ(state.selection.currentPlaylist, 1);
    errorBox.clear();
    run("NEXT_SOUNDFONT");
    EXPECT_EQ(errorBox, "No soundfont files found.");
    const std::string output = console_.Output();
    for (const char* said : {"Next Song...\n", "Change volume to 0.25...\n"}) {
        EXPECT_NE(output.find(said), std::string::npos) << said;
    }
}

TEST_F(CommandsTest, APositionOutsideThePlayWindowIsPlayedFrom) {
    AppState& state = Start();
    PlaybackState& playback = state.playback;
    playback.startSec = 100.0;
    playback.endSec = 120.0;
    playback.lastAttempt -= std::chrono::hours(1);
    for (const auto& [line, seconds] : {std::pair{"POS 2.5", 2.5}, {"POS 150", 150.0}}) {
        RunCommandLine(player_, line);
        EXPECT_NEAR(PositionSec(CurrentHandle(playback)), seconds, 1.0);
        EXPECT_FALSE(IsSongOver(playback)) << line;
    }
    for (const char* line : {"POS -1", "POS 200.1", "POS 1e300", "POS nan"}) {
        RunCommandLine(player_, line);
        EXPECT_NEAR(PositionSec(CurrentHandle(playback)), 150.0, 2.0) << line;
    }
    EXPECT_NE(console_.Output().find("Change position to 2.5 seconds..."), std::string::npos);
}

TEST_F(CommandsTest, SenselessLinesChangeNothing) {
    AppState& state = Start();
    const float volume = state.settings.volumeLevel;
    const size_t played = state.history.records.size();
    const std::string lines[] = {"VOL 1.5",        "VOL -0.1",      "VOL 1e300",     "VOL",
                                 "PLAY_SONG -1 0", "PLAY_SONG 2 0", "PLAY_SONG 0 2", "PLAY_SONG 2147483647 2147483647",
                                 "PREVIOUS_SONG",  "quit",          "Next Song",     std::string(1'000'000, 'N')};
    for (const std::string& line : lines) {
        RunCommandLine(player_, line);
        EXPECT_EQ(state.settings.volumeLevel, volume) << line.substr(0, 20);
        EXPECT_EQ(state.history.records.size(), played) << line.substr(0, 20);
        EXPECT_EQ(state.history.cursor, played - 1) << line.substr(0, 20);
    }
    RunCommandLine(player_, "songPlayDurationMin -5");
    RunCommandLine(player_, "FADE_DURATION_MS -5");
    EXPECT_GE(state.settings.songPlayDurationMin, 0);
    EXPECT_GE(state.settings.FADE_DURATION_MS, 0);
}

TEST_F(CommandsTest, TheConsoleTakesLinesMenuTextsAndQuit) {
    AppState& state = Start();
    bool ended = false;
    player_.endProgram = [&] { ended = true; };
    RunConsoleLine(player_, "VOL 0.75");
    EXPECT_EQ(state.settings.volumeLevel, 0.75F);
    RunConsoleLine(player_, "Play/Pause");
    EXPECT_EQ(BASS_ChannelIsActive(CurrentHandle(state.playback)), BASS_ACTIVE_PAUSED);
    RunConsoleLine(player_, "Favorites");  // a window, which there is not
    RunConsoleLine(player_, "");
    EXPECT_FALSE(ended);
    RunConsoleLine(player_, "quit");
    EXPECT_TRUE(ended);
}

TEST_F(CommandsTest, OnlyTheCompanionEditionListensToItsGame) {
    folder_.Write("game/commands.txt", "VOL 0.125\n");
    AppState& state = Start();
    state.folders.hullriderPath = folder_.At("game");
    PollPlayer(player_);
    EXPECT_EQ(folder_.Read("game/commands.txt"), "VOL 0.125\n");
    EXPECT_FALSE(folder_.Has("game/songInfo.txt"));

    state.shell.startupFinished = true;
    PollPlayer(player_);
    EXPECT_EQ(state.settings.volumeLevel, 0.125F);
    EXPECT_EQ(folder_.Read("game/commands.txt"), "");
    EXPECT_EQ(folder_.Read("game/songInfo.txt"),
              state.playback.item.title + "\n" + state.playback.item.secondLine + "\nMP3\n0\n");
    RunCommand(player_, kFavoriteUpCommand);
    PollPlayer(player_);
    EXPECT_TRUE(folder_.Read("game/songInfo.txt").ends_with("\n1\n"));
    state.folders.hullriderPath.clear();  // the end would look for the game's folder
}

TEST_F(CommandsTest, WithoutAGameItsCommandsDoNothing) {
    AppState& state = Start();
    for (const int32_t id : {kPlayGameCommand, kMergeFavoritesCommand, kSyncLibraryCommand}) RunCommand(player_, id);
    state.folders.hullriderPath = folder_.At("game");
    folder_.Write("game/favorite.json", R"({"favorites":[{"songPath":"/x.mp3","favoriteCount":2}]})");
    RunCommand(player_, kSyncLibraryCommand);
    RunCommand(player_, kMergeFavoritesCommand);
    EXPECT_EQ(folder_.Read("game/SongFavs.txt"), "/x.mp3\n");
    EXPECT_NE(folder_.Read("game/MusicLibraryCache.txt").find("three.mp3\n"), std::string::npos);
    EXPECT_FALSE(folder_.Has("game/MusicPaths.txt"));
    errorBox.clear();
    RunCommand(player_, kPlayGameCommand);  // there is no game in it
    EXPECT_TRUE(errorBox.starts_with("Error launching the game: ")) << errorBox;
    for (const char* name : {"MusicPaths.txt", "SoundFontsPath.Txt", "InternetStations.txt"}) {
        EXPECT_TRUE(folder_.Has(std::string("game/") + name)) << name;
    }
    state.folders.hullriderPath.clear();
}

}  // namespace
}  // namespace hullrider
