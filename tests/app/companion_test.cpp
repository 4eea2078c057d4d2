#include "app/companion.h"

#include <gtest/gtest.h>

#include "platform/paths.h"
#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

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
    WriteCompanionExports(state);
    EXPECT_EQ(folder.Read("SongFavs.txt"), "D:\\b\\3.mod\n");
    EXPECT_EQ(folder.Read("MusicLibraryCache.txt"), "C:\\a\\1.mp3\nC:\\a\\2.mid\nD:\\b\\3.mod\n");
    EXPECT_EQ(folder.Read("MusicPaths.txt"), "C:\\a\nD:\\b\n");
    EXPECT_EQ(folder.Read("SoundFontsPath.Txt"), "C:\\fonts\n");
    state.soundFonts.soundFontFiles = {"D:\\beside\\a.sf2"};
    WriteCompanionExports(state);
    EXPECT_EQ(folder.Read("SoundFontsPath.Txt"), "D:\\beside\n") << "those in use, while the user's own are away";
}

TEST(Companion, AllFiveExportsAreWrittenInTheirOrder) {
    const TemporaryFolder folder;
    AppState state;
    state.folders.hullriderPath = folder.At("missing");
    InternetStation station;
    station.url = "http://station";
    state.radio.stations = {station};
    ConsoleCapture console;
    WriteCompanionExports(state);
    std::string expected;
    for (const char* name :
         {"MusicLibraryCache.txt", "InternetStations.txt", "SongFavs.txt", "MusicPaths.txt", "SoundFontsPath.Txt"}) {
        expected += "Failed to open " + StatePath(folder.At("missing"), name) + " for writing.\n";
    }
    EXPECT_EQ(console.Errors(), expected);
    state.folders.hullriderPath = folder.Text();
    WriteCompanionExports(state);
    EXPECT_EQ(folder.Read("InternetStations.txt"), "http://station\n");
}

}  // namespace
}  // namespace hullrider
