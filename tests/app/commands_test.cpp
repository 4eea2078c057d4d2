// Whole players, without a window, that are told what to do.
#include "app/commands.h"

#include "app/command_lines.h"
#include "audio/bass.h"
#include "display/panel.h"
#include "input/hotkeys.h"
#include "library/song_counts.h"
#include "playback/play_next.h"
#include "playback/seek.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "tests/app/whole_player.h"

namespace hullrider {
namespace {

class CommandsTest : public WholePlayerTest {
protected:
    CommandsTest() : state_(BeginWithMusic()) {}

    AppState& BeginWithMusic() {
        const std::string tone = ToneWav(440.0, 200.0);
        for (const char* song : {"music/A/one.mp3", "music/A/two.mp3", "music/B/three.mp3"}) folder_.Write(song, tone);
        RunOptions options;
        options.music = {folder_.At("music")};
        return Begin(options).state;
    }

    bool Plays() const { return BASS_ChannelIsActive(CurrentHandle(state_.playback)) == BASS_ACTIVE_PLAYING; }
    bool IsPaused() const { return BASS_ChannelIsActive(CurrentHandle(state_.playback)) == BASS_ACTIVE_PAUSED; }

    const Song& Playing() const {
        const SongChoice& at = state_.playback.item.place;
        return state_.library.playlists[static_cast<size_t>(at.playlist)].songs[static_cast<size_t>(at.song)];
    }

    bool Run(int32_t command) { return RunCommand(*player_, command); }
    void Run(const std::string& line) { RunCommandLine(*player_, line); }

    AppState& state_;
};

TEST(MainMenu, EveryItemIsACommand) {
    for (const MenuPopup& popup : MainMenu()) {
        for (const int32_t id : popup.commands) EXPECT_NE(FindCommand(id), nullptr) << id;
    }
}

TEST_F(CommandsTest, EachHotkeyDoesWhatItsLabelSays) {
    const auto press = [&](int32_t action) { return RunCommand(*player_, CommandOfHotkey(action)); };
    const std::string first = Playing().songPath;
    press(kNextSongKey);
    EXPECT_EQ(state_.history.records.size(), 2U);
    press(kPreviousSongKey);
    EXPECT_EQ(Playing().songPath, first);
    press(kPlayPauseKey);
    EXPECT_TRUE(IsPaused());
    press(kMediaPlayPauseKey);
    EXPECT_FALSE(IsPaused());

    state_.settings.volumeLevel = 0.5F;
    press(kVolumeUpKey);
    EXPECT_NEAR(state_.settings.volumeLevel, 0.55F, 1e-6);
    press(kVolumeDownKey);
    press(kVolumeDownKey);
    EXPECT_NEAR(state_.settings.volumeLevel, 0.45F, 1e-6);
    press(kVolumeToggleKey);
    EXPECT_EQ(state_.settings.volumeLevel, state_.settings.highVolume);

    press(kFavoriteUpKey);
    press(kFavoriteUpKey);
    EXPECT_EQ(Playing().favoriteCount, 2);
    press(kFavoriteDownKey);
    EXPECT_EQ(Playing().favoriteCount, 1);

    for (const int32_t key : {kNextSoundFontKey, kPreviousSoundFontKey}) {
        ErrorBoxes::last.clear();
        press(key);
        EXPECT_EQ(ErrorBoxes::last, "No soundfont files found.");
    }
    state_.selection.playMode = kPlaylistMode;
    press(kMusicHomeKey);
    EXPECT_EQ(state_.selection.playMode, kLibraryMode);
    press(kNextStationKey);  // there are none
    press(kPreviousStationKey);
    EXPECT_EQ(state_.selection.playMode, kLibraryMode);

    bool ended = false, shown = false;
    player_->endProgram = [&] { ended = true; };
    player_->bringToFront = [&] { shown = true; };
    press(kQuitKey);
    press(kShowPlayerKey);
    EXPECT_TRUE(ended && shown);
    EXPECT_FALSE(press(kKeyBind1Key) || press(-1) || press(12345));
}

TEST_F(CommandsTest, AStopIsSilenceUntilSomethingIsStarted) {
    const int32_t starts[] = {kStartCommand,        kPlayPauseCommand,    kStopStartCommand, kNextSongCommand,
                              kPreviousSongCommand, kNextPlaylistCommand, kMusicHomeCommand};
    for (const int32_t start : starts) {
        Run(kNextSongCommand);  // so that there is a previous one
        Run(kStopCommand);
        Run(kStopCommand);
        EXPECT_EQ(CurrentHandle(state_.playback), 0U) << start;
        state_.playback.lastAttempt -= std::chrono::hours(1);
        PollPlayer(*player_);
        EXPECT_EQ(CurrentHandle(state_.playback), 0U) << start;
        Run(kFavoriteUpCommand);  // of nothing
        EXPECT_EQ(state_.favorites.list.size(), 0U);
        Run(start);
        EXPECT_TRUE(Eventually([&] { return Plays(); })) << start;
    }
    Run(kStartCommand);  // also while it plays
    EXPECT_TRUE(Eventually([&] { return Plays(); }));
    SaveAndShutdown(*player_);
    EXPECT_FALSE(Run(kNextSongCommand));
}

TEST_F(CommandsTest, LinesChangeWhatTheySay) {
    Settings& settings = state_.settings;
    Run("VOL 0.25");
    EXPECT_EQ(settings.volumeLevel, 0.25F);
    const std::pair<std::string, int32_t Settings::*> numbers[] = {
        {"songPlayDurationMax", &Settings::songPlayDurationMax},
        {"songPlayDurationMin", &Settings::songPlayDurationMin},
        {"FADE_DURATION_MS", &Settings::FADE_DURATION_MS},
        {"rawMidi", &Settings::rawMIDI},
        {"rawTracker", &Settings::rawTracker},
        {"rawFav", &Settings::rawFav},
        {"rawMP3", &Settings::rawMP3}};
    for (const int32_t value : {4, 3}) {
        for (const auto& [word, field] : numbers) {
            Run(word + ' ' + std::to_string(value));
            EXPECT_EQ(settings.*field, value) << word;
        }
    }
    EXPECT_EQ(state_.weights.mp3, 3);
    EXPECT_EQ(state_.weights.midi, 0);  // there are no MIDI songs
    EXPECT_EQ(state_.weights.favorites, 0);
    Run("favoriteCount 5");
    EXPECT_EQ(state_.weights.favorites, 3);
    ASSERT_EQ(state_.favorites.list.size(), 1U);
    EXPECT_EQ(state_.favorites.list[0].songPath, Playing().songPath);
    EXPECT_EQ(Playing().favoriteCount, 5);
    EXPECT_EQ(Playing().isFavorite, 1);
    Run("favoriteCount -3");
    EXPECT_TRUE(state_.favorites.list.empty());
    EXPECT_EQ(Playing().isFavorite, 0);
    EXPECT_EQ(state_.weights.favorites, 0);

    Run("SHUFFLE");
    EXPECT_FALSE(state_.selection.shuffle);
    Run("SHUFFLE");
    EXPECT_TRUE(state_.selection.shuffle);
    for (const int32_t filter : {1, 2, 0}) {
        Run("favoritesOnly");
        EXPECT_EQ(state_.selection.favoritesFilter, filter);
        EXPECT_EQ(state_.selection.playMode, filter + 1);
    }
    Run("PLAY_SONG 1 0");
    const std::string asked = Playing().songPath;
    EXPECT_EQ(asked, state_.library.playlists[1].songs[0].songPath);
    Run("NEXT_SONG");
    Run("PREVIOUS_SONG");
    EXPECT_EQ(Playing().songPath, asked);
    state_.selection.playMode = kPlaylistMode;
    Run("NEXT_PLAYLIST");
    EXPECT_EQ(state_.selection.currentPlaylist, 1);
    ErrorBoxes::last.clear();
    Run("NEXT_SOUNDFONT");
    EXPECT_EQ(ErrorBoxes::last, "No soundfont files found.");
    const std::string output = console_->Output();
    for (const char* said : {"Next Song...\n", "Change volume to 0.25...\n"}) {
        EXPECT_NE(output.find(said), std::string::npos) << said;
    }
}

TEST_F(CommandsTest, WithoutShuffleTheSongsAfterTheOneThatPlaysFollowInOrder) {
    const auto playAndGoOn = [&](int64_t number, int32_t mode, int32_t playlist) {
        const SongPosition at = *SongAt(state_.library, number);
        state_.selection.shuffle = true;
        state_.selection.playMode = mode;
        state_.selection.currentPlaylist = playlist;
        state_.selection.currentSongInPlaylist = -1;
        Run("PLAY_SONG " + std::to_string(at.playlist) + ' ' + std::to_string(at.song));
        Run("SHUFFLE");
        Run("NEXT_SONG");
    };
    const auto pathOf = [&](int64_t number) {
        const SongPosition at = *SongAt(state_.library, number);
        return FindSong(state_.library, at)->songPath;
    };
    for (int64_t number = 0; number < 3; ++number) {
        playAndGoOn(number, kLibraryMode, 0);
        EXPECT_EQ(Playing().songPath, pathOf((number + 1) % 3));
    }
    playAndGoOn(0, kPlaylistMode, 1);
    EXPECT_EQ(state_.selection.currentPlaylist, 1) << "the user is in that one";
    EXPECT_EQ(state_.selection.currentSongInPlaylist, 0);
}

TEST_F(CommandsTest, WhatComesNextIsShownOnceItIsReady) {
    const auto shown = [&] { return MakePanelModel(state_, ReadChannel(state_.playback)); };
    const auto secondsBeforeTheEnd = [&](double seconds) {
        ASSERT_TRUE(SeekTo(state_.playback, state_.playback.endSec - seconds));
        PollPlayer(*player_);
    };
    secondsBeforeTheEnd(20.0);
    EXPECT_EQ(shown().next, "");
    secondsBeforeTheEnd(11.5);
    const std::string next = shown().next;
    EXPECT_NE(next, "");
    EXPECT_FALSE(shown().isNextSoon);
    secondsBeforeTheEnd(9.0);
    EXPECT_TRUE(shown().isNextSoon);
    Run(kNextSongCommand);
    EXPECT_EQ(shown().title, next);
}

TEST_F(CommandsTest, APositionOutsideThePlayWindowIsPlayedFrom) {
    PlaybackState& playback = state_.playback;
    playback.startSec = 100.0;
    playback.endSec = 120.0;
    playback.lastAttempt -= std::chrono::hours(1);
    for (const auto& [line, seconds] : {std::pair{"POS 2.5", 2.5}, {"POS 150", 150.0}}) {
        Run(line);
        EXPECT_NEAR(PositionSec(CurrentHandle(playback)), seconds, 1.0);
        EXPECT_FALSE(IsSongOver(playback)) << line;
    }
    for (const char* line : {"POS -1", "POS 200.1", "POS 1e300", "POS nan"}) {
        Run(line);
        EXPECT_NEAR(PositionSec(CurrentHandle(playback)), 150.0, 2.0) << line;
    }
    EXPECT_NE(console_->Output().find("Change position to 2.5 seconds..."), std::string::npos);
}

TEST_F(CommandsTest, SenselessLinesChangeNothing) {
    const float volume = state_.settings.volumeLevel;
    const size_t played = state_.history.records.size();
    const std::string lines[] = {"VOL 1.5",        "VOL -0.1",      "VOL 1e300",     "VOL",
                                 "PLAY_SONG -1 0", "PLAY_SONG 2 0", "PLAY_SONG 0 2", "PLAY_SONG 2147483647 2147483647",
                                 "PREVIOUS_SONG",  "quit",          "Next Song",     std::string(1'000'000, 'N')};
    for (const std::string& line : lines) {
        Run(line);
        EXPECT_EQ(state_.settings.volumeLevel, volume) << line.substr(0, 20);
        EXPECT_EQ(state_.history.records.size(), played) << line.substr(0, 20);
        EXPECT_EQ(state_.history.cursor, played - 1) << line.substr(0, 20);
    }
    Run("songPlayDurationMin -5");
    Run("FADE_DURATION_MS -5");
    EXPECT_GE(state_.settings.songPlayDurationMin, 0);
    EXPECT_GE(state_.settings.FADE_DURATION_MS, 0);
}

TEST_F(CommandsTest, TheConsoleTakesLinesMenuTextsAndQuit) {
    bool ended = false;
    player_->endProgram = [&] { ended = true; };
    RunConsoleLine(*player_, "VOL 0.75");
    EXPECT_EQ(state_.settings.volumeLevel, 0.75F);
    RunConsoleLine(*player_, "Play/Pause");
    EXPECT_TRUE(IsPaused());
    RunConsoleLine(*player_, "Favorites");  // a window, which there is not
    RunConsoleLine(*player_, "");
    EXPECT_FALSE(ended);
    RunConsoleLine(*player_, "quit");
    EXPECT_TRUE(ended);
}

TEST_F(CommandsTest, OnlyTheCompanionEditionListensToItsGame) {
    folder_.Write("game/commands.txt", "VOL 0.125\n");
    state_.folders.hullriderPath = folder_.At("game");
    PollPlayer(*player_);
    EXPECT_EQ(folder_.Read("game/commands.txt"), "VOL 0.125\n");
    EXPECT_FALSE(folder_.Has("game/songInfo.txt"));

    state_.shell.startupFinished = true;
    PollPlayer(*player_);
    EXPECT_EQ(state_.settings.volumeLevel, 0.125F);
    EXPECT_EQ(folder_.Read("game/commands.txt"), "");
    EXPECT_EQ(folder_.Read("game/songInfo.txt"),
              state_.playback.item.title + "\n" + state_.playback.item.secondLine + "\nMP3\n0\n");
    Run(kFavoriteUpCommand);
    PollPlayer(*player_);
    EXPECT_TRUE(folder_.Read("game/songInfo.txt").ends_with("\n1\n"));
    state_.folders.hullriderPath.clear();  // the end would look for the game's folder
}

TEST_F(CommandsTest, WithoutAGameItsCommandsDoNothing) {
    for (const int32_t id : {kPlayGameCommand, kMergeFavoritesCommand, kSyncLibraryCommand}) Run(id);
    state_.folders.hullriderPath = folder_.At("game");
    folder_.Write("game/favorite.json", R"({"favorites":[{"songPath":"/x.mp3","favoriteCount":2}]})");
    Run(kSyncLibraryCommand);
    Run(kMergeFavoritesCommand);
    EXPECT_EQ(folder_.Read("game/SongFavs.txt"), "/x.mp3\n");
    EXPECT_NE(folder_.Read("game/MusicLibraryCache.txt").find("three.mp3\n"), std::string::npos);
    EXPECT_FALSE(folder_.Has("game/MusicPaths.txt"));
    ErrorBoxes::last.clear();
    Run(kPlayGameCommand);  // there is no game in it
    EXPECT_TRUE(ErrorBoxes::last.starts_with("Error launching the game: ")) << ErrorBoxes::last;
    for (const char* name : {"MusicPaths.txt", "SoundFontsPath.Txt", "InternetStations.txt"}) {
        EXPECT_TRUE(folder_.Has(std::string("game/") + name)) << name;
    }
    state_.folders.hullriderPath.clear();
}

}  // namespace
}  // namespace hullrider
