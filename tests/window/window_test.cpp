// The real program in its real window.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "app/menu_win.h"
#include "tests/tone_wav.h"
#include "tests/window/player_process_win.h"

namespace hullrider {
namespace {

constexpr wchar_t kClass[] = L"HelloWorldClass";
constexpr wchar_t kTitle[] = L"Hullrider Radio";

class WindowTest : public testing::Test {
protected:
    std::vector<std::string> Arguments(std::vector<std::string> more = {}) const {
        more.insert(more.end(), {"--data-dir", folder_.At("data"), "--output", "null"});
        return more;
    }

    TemporaryFolder folder_;
};

// The different colours of the window's client area, as it stands on the screen.
size_t CountColors(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    const HDC dc = GetDC(window);
    std::set<COLORREF> colors;
    for (int y = 0; y < client.bottom; y += 2) {
        for (int x = 0; x < client.right; x += 2) colors.insert(GetPixel(dc, x, y));
    }
    ReleaseDC(window, dc);
    return colors.size();
}

TEST_F(WindowTest, ComesUpWithItsClassTitleStyleSizeAndOpacity) {
    PlayerProcess player(Arguments());
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr) << player.Output();
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    EXPECT_EQ(style & WS_OVERLAPPEDWINDOW, static_cast<DWORD>(WS_OVERLAPPEDWINDOW));
    EXPECT_NE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_LAYERED, 0);

    BYTE alpha = 0;
    DWORD flags = 0;
    ASSERT_NE(GetLayeredWindowAttributes(window, nullptr, &alpha, &flags), 0);
    EXPECT_EQ(alpha, 255);
    EXPECT_EQ(flags, static_cast<DWORD>(LWA_ALPHA));

    // The size was chosen before the menu took its line from the client area.
    RECT client;
    GetClientRect(window, &client);
    const int width = std::min(1250, static_cast<int>(0.9F * static_cast<float>(GetSystemMetrics(SM_CXSCREEN))));
    const int height = std::min(458, static_cast<int>(0.9F * static_cast<float>(GetSystemMetrics(SM_CYSCREEN))));
    EXPECT_EQ(client.right, width);
    EXPECT_EQ(client.bottom + GetSystemMetrics(SM_CYMENU), height);
}

TEST_F(WindowTest, DrawsItsPanelAndDrawsItAgainWhenResized) {
    PlayerProcess player(Arguments());
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    Sleep(1000);
    EXPECT_GT(CountColors(window), 20U);
    SetWindowPos(window, nullptr, 0, 0, 500, 260, SWP_NOZORDER);
    Sleep(1000);
    EXPECT_GT(CountColors(window), 20U);
}

// The menu of another process cannot be read everywhere, so this one is built here.
TEST(MainMenu, HoldsItsCommands) {
    const HMENU menu = BuildMainMenu();
    ASSERT_EQ(GetMenuItemCount(menu), 1);
    wchar_t text[64] = {};
    GetMenuStringW(menu, 0, text, 64, MF_BYPOSITION);
    EXPECT_STREQ(text, L"&File");
    const HMENU file = GetSubMenu(menu, 0);
    ASSERT_EQ(GetMenuItemCount(file), 1);
    EXPECT_EQ(GetMenuItemID(file, 0), 3U);
    GetMenuStringW(file, 0, text, 64, MF_BYPOSITION);
    EXPECT_STREQ(text, L"Exit");
    DestroyMenu(menu);
}

TEST_F(WindowTest, TheMenusExitSavesAndEnds) {
    PlayerProcess player(Arguments());
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(folder_.Has("data/MusicSettings.json"));
    PostMessageW(window, WM_COMMAND, 3, 0);
    EXPECT_EQ(player.WaitForExit(), 0);
    EXPECT_TRUE(folder_.Has("data/MusicSettings.json"));
    EXPECT_TRUE(folder_.Has("data/config.json"));
}

TEST_F(WindowTest, ClosingItAndTheEndOfItsTimeSaveToo) {
    {
        PlayerProcess player(Arguments());
        PostMessageW(player.WaitForWindow(kClass, kTitle), WM_CLOSE, 0, 0);
        EXPECT_EQ(player.WaitForExit(), 0);
        EXPECT_TRUE(folder_.Has("data/MusicSettings.json"));
    }
    std::filesystem::remove_all(folder_.Path() / "data");
    PlayerProcess player(Arguments({"--for", "1"}));
    EXPECT_EQ(player.WaitForExit(), 0);
    EXPECT_TRUE(folder_.Has("data/MusicSettings.json"));
    EXPECT_NE(player.Output().find("No audiobooks to save. Skipping save operation."), std::string::npos);
}

TEST_F(WindowTest, PlaysTheFallbackMusicThroughASongThatIsBroken) {
    folder_.Write("music/\xC3\x81lbum/t\xC3\xB6ne.mp3", ToneWav(440.0, 30.0));
    folder_.Write("music/\xC3\x81lbum/broken.mp3", "this is not music");
    PlayerProcess player(Arguments({"--fallback-music", folder_.At("music"), "--for", "3"}));
    EXPECT_EQ(player.WaitForExit(), 0);
    EXPECT_NE(player.Output().find("Playing: \xC3\x81lbum / t\xC3\xB6ne"), std::string::npos) << player.Output();
    EXPECT_TRUE(folder_.Has("data/musicLibraryCache.json"));
}

TEST_F(WindowTest, ABadOptionIsOneLineAndStatusTwo) {
    PlayerProcess player({"--nonsense"});
    EXPECT_EQ(player.WaitForExit(), 2);
    const std::string output = player.Output();
    EXPECT_NE(output.find("--nonsense"), std::string::npos);
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
}

TEST_F(WindowTest, WithoutADataFolderItSaysWhyAndEnds) {
    PlayerProcess player({"--output", "null", "--data-dir", folder_.At("missing/below")});
    const HWND box = player.WaitForWindow(L"#32770", L"Error");
    ASSERT_NE(box, nullptr);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(player.WaitForExit(), 1);
    EXPECT_NE(player.Output().find("create_directory"), std::string::npos) << player.Output();
}

}  // namespace
}  // namespace hullrider
