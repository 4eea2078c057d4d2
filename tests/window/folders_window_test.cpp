// The folder and the favorites windows of the real program.
#include <windows.h>

#include <commctrl.h>

#include "tests/window/controls_win.h"
#include "tests/window/window_fixture_win.h"

namespace hullrider {
namespace {

bool Shows(HWND window, const wchar_t* text) {
    return Eventually([&] { return FindControl(window, nullptr, text) != nullptr; });
}

void Click(HWND window, const wchar_t* button) {
    PostMessageW(FindControl(window, L"BUTTON", button), BM_CLICK, 0, 0);
}

class FoldersWindowTest : public PlayerWindowTest {
protected:
    FoldersWindowTest() {
        folder_.Write("one/A/first.mp3", ToneWav(440.0, 100.0));
        folder_.Write("two/B/second.mp3", ToneWav(440.0, 100.0));
    }

    std::string Quoted(const std::string& name) const {
        std::string quoted = "\"";
        for (const char letter : folder_.At(name))
            quoted += letter == '\\' ? std::string("\\\\") : std::string(1, letter);
        return quoted + '"';
    }

    // The window of that command, with the music folders that are given.
    HWND Open(const std::vector<std::string>& folders, int32_t command, const wchar_t* className) {
        std::string list;
        for (const std::string& name : folders) list += (list.empty() ? "" : ",") + Quoted(name);
        folder_.Write("data/MusicSettings.json", "{\"directoryPaths\":[" + list + "]}");
        Start();
        EXPECT_TRUE(player_->WaitForOutput("Playing: ", 1)) << player_->Output();
        Choose(command);
        return player_->WaitForWindow(className, nullptr);
    }
};

TEST_F(FoldersWindowTest, FoldersAreAddedMovedAndRemovedWhileTheMusicPlays) {
    const HWND window = Open({"one"}, kFoldersCommand, L"CustomFolderDialogClass");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(Shows(window, L"In the library: 1 album, 1 song"));

    Click(window, L"&Add...");
    const HWND chooser = player_->WaitForWindow(L"#32770", L"Choose a music folder");
    ASSERT_NE(chooser, nullptr);
    ASSERT_TRUE(Eventually([&] { return FindControl(chooser, L"Edit", nullptr) != nullptr; }));
    SendMessageW(FindControl(chooser, L"Edit", nullptr), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(WideFromUtf8(folder_.At("two")).c_str()));
    PostMessageW(chooser, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(Shows(window, L"In the library: 2 albums, 2 songs")) << player_->Output();
    EXPECT_TRUE(FileHolds("data/MusicSettings.json", "two"));

    Click(window, L"Move &Up");  // the added one, which is selected
    EXPECT_TRUE(FileFits("data/MusicSettings.json",
                         [](const std::string& settings) { return settings.find("two\"") < settings.find("one\""); }));
    // The button is disabled now and has given the keyboard to the list. A key that is held removes one folder only.
    constexpr LPARAM kStillDown = 1 << 30;
    const HWND list = FindControl(window, WC_LISTVIEWW, nullptr);
    PostMessageW(list, WM_KEYDOWN, VK_DELETE, 1);
    PostMessageW(list, WM_KEYDOWN, VK_DELETE, 1 | kStillDown);
    EXPECT_TRUE(Shows(window, L"In the library: 1 album, 1 song"));
    Click(window, L"&Remove");
    EXPECT_TRUE(Shows(window, L"There is no music in the library."));
    EXPECT_TRUE(FileHolds("data/MusicSettings.json", "\"directoryPaths\": []"));
    Choose(kNextSongCommand);
    EXPECT_TRUE(player_->WaitForOutput("No music found", 1)) << player_->Output();
    EXPECT_EQ(Exit(), 0);
    EXPECT_FALSE(folder_.Has("data/musicLibraryCache.json"));
}

TEST_F(FoldersWindowTest, AFolderOfArtistsIsReplacedByTheirFoldersWithOneClick) {
    for (const char* song : {"tree/Bach/Organ/1.mp3", "tree/Bach/Masses/1.mp3", "tree/Abba/Gold/1.mp3"}) {
        folder_.Write(song, "x");
    }
    const HWND window = Open({"one", "tree"}, kFoldersCommand, L"CustomFolderDialogClass");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(Shows(window, L"In the library: 1 album, 1 song"));
    PostMessageW(FindControl(window, WC_LISTVIEWW, nullptr), WM_KEYDOWN, VK_DOWN, 1);
    const wchar_t* const offer = L"Add these 2 folders (3 songs)";
    ASSERT_TRUE(Shows(window, offer));
    EXPECT_NE(FindControl(window, L"STATIC", L"The albums lie deeper: a music folder must hold them directly."),
              nullptr);
    Click(window, offer);
    EXPECT_TRUE(Shows(window, L"In the library: 4 albums, 4 songs")) << player_->Output();
    EXPECT_TRUE(FileHolds("data/MusicSettings.json", "Bach\""));
    EXPECT_EQ(folder_.Read("data/MusicSettings.json").find("tree\""), std::string::npos);
    EXPECT_TRUE(Eventually([&] { return IsWindowVisible(FindControl(window, L"BUTTON", L"")) == 0; }));
    EXPECT_EQ(Exit(), 0);
}

TEST_F(FoldersWindowTest, FavoritesAreCountedPlayedAndCleared) {
    folder_.Write("data/favorite.json", "{\"favorites\":[{\"songPath\":\"D:\\\\Away\\\\gone.mp3\"},{\"songPath\":" +
                                            Quoted("two/B/second.mp3") + ",\"favoriteCount\":5}]}");
    const HWND window = Open({"one", "two"}, kFavoriteOptionsCommand, L"CustomFavDialogClass");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(Shows(window, L"2 favorites, 1 of them not in the library"));
    Click(window, L"Count &Up  (+)");
    EXPECT_TRUE(FileHolds("data/favorite.json", "\"favoriteCount\":6"));
    const std::string before = player_->Output();
    Click(window, L"&Play Now");
    EXPECT_TRUE(Eventually([&] {
        return player_->Output().find("Playing: B / second", before.size()) != std::string::npos;
    })) << player_->Output();

    Click(window, L"Clear &All Favorites");
    const HWND question = player_->WaitForWindow(L"#32770", L"Favorite Options");
    ASSERT_NE(question, nullptr);
    PostMessageW(question, WM_COMMAND, IDYES, 0);
    EXPECT_TRUE(Shows(window, L"There are no favorites yet."));
    EXPECT_EQ(Exit(), 0);
    EXPECT_EQ(folder_.Read("data/favorite.json").find("mp3"), std::string::npos);
}

TEST_F(FoldersWindowTest, TheProgramCanEndWhileAQuestionIsOpen) {
    folder_.Write("data/favorite.json", "{\"favorites\":[{\"songPath\":" + Quoted("two/B/second.mp3") + "}]}");
    const HWND window = Open({"two"}, kFavoriteOptionsCommand, L"CustomFavDialogClass");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(Shows(window, L"1 favorite"));
    Click(window, L"Clear &All Favorites");
    ASSERT_NE(player_->WaitForWindow(L"#32770", L"Favorite Options"), nullptr);
    EXPECT_EQ(Exit(), 0) << player_->Output();
    EXPECT_NE(folder_.Read("data/favorite.json").find("second.mp3"), std::string::npos);
}

}  // namespace
}  // namespace hullrider
