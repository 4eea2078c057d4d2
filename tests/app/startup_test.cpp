#include "app/startup.h"
#include "app/heartbeat.h"

#include "input/hotkey_file.h"
#include "playback/stream_slots.h"
#include "tests/app/whole_player.h"
#include "tests/app/working_folder.h"

namespace hullrider {
namespace {

class StartupTest : public WholePlayerTest {
protected:
    StartupTest() { WriteMusic(); }
};

TEST_F(StartupTest, TheFirstStartMakesItsFolderAndLeavesItsFiles) {
    Player& player = Start();
    EXPECT_TRUE(player.state.library.playlists.empty());
    EXPECT_EQ(player.state.playback.trouble, PlaybackTrouble::kNoMusic);
    EXPECT_EQ(ErrorBoxes::last, "No soundfont files found.");
    Stop(player);
    EXPECT_EQ(StateFile("MusicSettings.json").size(), 44U);
    EXPECT_EQ(StateFile("config.json").size(), 2U);
    EXPECT_FALSE(folder_.Has("data/musicLibraryCache.json"));  // an empty library is never written
    EXPECT_EQ(TimesPrinted("Music library cache is empty or couldn't be loaded."), 1);
    EXPECT_EQ(TimesPrinted("No directory paths available to update music library."), 1);
    EXPECT_EQ(TimesPrinted("No audiobooks to save. Skipping save operation."), 1);
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

TEST_F(StartupTest, WhatTheFrontLeavesAtItsEndIsSaved) {
    Player& player = Start();
    player.releaseFront = [&] {
        player.state.shell.options.x = 77;  // the window's last place
        player.state.settings.historyDepth = 5;
    };
    Stop(player);
    EXPECT_EQ(StateFile("ShellOptions.json")["x"], 77);
    EXPECT_EQ(StateFile("MusicSettings.json")["historyDepth"], 5);
}

TEST_F(StartupTest, ARecordingThatCannotBeWrittenEndsTheStart) {
    Player player;
    player.options.dataDir = folder_.At("data");
    player.options.output = {OutputKind::kWav, folder_.At("missing/heard.wav")};
    EXPECT_THROW(StartPlayer(player), std::runtime_error);
}

}  // namespace
}  // namespace hullrider
