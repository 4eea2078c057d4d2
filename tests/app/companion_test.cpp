#include "app/companion.h"

#include "tests/app/whole_player.h"

namespace hullrider {
namespace {

TEST(Companion, TheGameIsTheNearestFolderAboveThatHoldsItsContent) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path() / "game" / "Tonewell");
    std::filesystem::create_directories(folder.Path() / "game" / "tools" / "player");
    EXPECT_EQ(FindCompanionGame(folder.At("game/tools/player")), folder.At("game"));
    EXPECT_EQ(FindCompanionGame(folder.At("game")), folder.At("game"));
    EXPECT_EQ(FindCompanionGame(folder.Text()), "");
}

TEST(Companion, TheExportsListSongsAndFoldersOneALine) {
    const TemporaryFolder folder;
    AppState state;
    state.folders = {"C:\\fonts", folder.Text()};
    state.settings.directoryPaths = {"C:\\a", "D:\\b"};
    state.library.playlists = {{"A", {{"C:\\a\\1.mp3"}, {"C:\\a\\2.mid"}}}, {"B", {{"D:\\b\\3.mod"}}}};
    state.favorites.list.push_back({kTracker, 0, 1, 1, "D:\\b\\3.mod"});
    state.radio.stations.emplace_back().url = "http://station";
    WriteCompanionExports(state);
    EXPECT_EQ(folder.Read("SongFavs.txt"), "D:\\b\\3.mod\n");
    EXPECT_EQ(folder.Read("MusicLibraryCache.txt"), "C:\\a\\1.mp3\nC:\\a\\2.mid\nD:\\b\\3.mod\n");
    EXPECT_EQ(folder.Read("MusicPaths.txt"), "C:\\a\nD:\\b\n");
    EXPECT_EQ(folder.Read("SoundFontsPath.Txt"), "C:\\fonts\n");
    EXPECT_EQ(folder.Read("InternetStations.txt"), "http://station\n");
    state.soundFonts.soundFontFiles = {"D:\\beside\\a.sf2"};
    WriteCompanionExports(state);
    EXPECT_EQ(folder.Read("SoundFontsPath.Txt"), "D:\\beside\n") << "those in use, while the user's own are away";
    state.folders.hullriderPath = folder.At("missing");
    ConsoleCapture console;
    WriteCompanionExports(state);
    EXPECT_TRUE(console.Errors().starts_with("Failed to open " + folder.At("missing/MusicLibraryCache.txt")));
}

class CompanionEdition : public WholePlayerTest {
protected:
    CompanionEdition() { WriteMusic(); }
};

TEST_F(CompanionEdition, TakesOverTheGamesMusicAndTellsIt) {
    const std::string song = folder_.Write("game/Tonewell/Mp3 Songs/Album/five.mp3", "x");
    const std::string font = folder_.Write("game/Tonewell/SoundFonts/font.sf2", "not one");
    Player& player = Start({}, folder_.At("game/player"));
    EXPECT_EQ(folder_.Read("game/MusicRunning.txt"), "yes");
    EXPECT_EQ(folder_.Read("game/MusicLibraryCache.txt"), song + "\n");
    EXPECT_TRUE(player.state.shell.companionExport && player.state.shell.startupFinished);
    EXPECT_EQ(player.state.soundFonts.soundFontFiles, std::vector<std::string>{font});
    EXPECT_EQ(ErrorBoxes::last, "Failed to load the selected soundfont.");
    Stop(player);
    EXPECT_EQ(TimesPrinted("Current directory: "), 1);
    EXPECT_EQ(folder_.Read("game/MusicRunning.txt"), "no");
    EXPECT_EQ(StateFile("MusicSettings.json")["directoryPaths"], json::array({folder_.At("game/Tonewell/Mp3 Songs")}));
    EXPECT_EQ(StateFile("config.json")["hullriderPath"], folder_.At("game"));
}

TEST_F(CompanionEdition, ItsMixIsTakenWithoutMusicFoldersOnly) {
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

TEST_F(CompanionEdition, TheStandardEditionWritesTheGamesMarkerAndNothingElse) {
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

}  // namespace
}  // namespace hullrider
