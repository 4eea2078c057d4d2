// The real program in its real window.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/menu_win.h"
#include "display/panel_layout.h"
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

PixelBox PixelsOf(HWND window, PanelElement element) {
    RECT client;
    GetClientRect(window, &client);
    return FitPanel(client.right, client.bottom).ToPixels(BoxOf(element));
}

// The share of an element's pixels that are bright, as they stand on the screen.
double Brightness(HWND window, PanelElement element) {
    const PixelBox box = PixelsOf(window, element);
    const HDC dc = GetDC(window);
    int bright = 0;
    for (int y = 0; y < box.height; ++y) {
        for (int x = 0; x < box.width; ++x) bright += GetRValue(GetPixel(dc, box.x + x, box.y + y)) > 140 ? 1 : 0;
    }
    ReleaseDC(window, dc);
    return static_cast<double>(bright) / (box.width * box.height);
}

void Click(HWND window, PanelElement element) {
    const PixelBox box = PixelsOf(window, element);
    const LPARAM place = MAKELPARAM(box.x + box.width / 2, box.y + box.height / 2);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(window, WM_LBUTTONUP, 0, place);
}

int TimesIn(const std::string& text, const std::string& wanted) {
    int count = 0;
    for (size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) ++count;
    return count;
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

TEST_F(WindowTest, ShowsWhatPlaysAtEverySizeAndItsKeysWork) {
    folder_.Write("music/Album/tone.mp3", ToneWav(440.0, 60.0));
    PlayerProcess player(Arguments({"--music", folder_.At("music")}));
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    for (const auto& [width, height] : {std::pair{700, 300}, {1100, 400}}) {
        SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOZORDER);
        Sleep(1000);
        for (const PanelElement element : {PanelElement::kKind, PanelElement::kAlbum, PanelElement::kTitle,
                                           PanelElement::kClock, PanelElement::kMeter, PanelElement::kSongBar}) {
            EXPECT_GT(Brightness(window, element), 0.01) << IndexOf(element) << " at width " << width;
        }
        EXPECT_EQ(Brightness(window, PanelElement::kSoundFont), 0.0) << "a tone has no SoundFont";
    }

    const double playing = Brightness(window, PanelElement::kPlayPause);
    Click(window, PanelElement::kPlayPause);
    Sleep(4500);
    EXPECT_EQ(Brightness(window, PanelElement::kMeter), 0.0) << "paused, the meter falls";
    EXPECT_NE(Brightness(window, PanelElement::kPlayPause), playing) << "the key shows what it would do";

    EXPECT_EQ(TimesIn(player.Output(), "Playing: "), 1);
    Click(window, PanelElement::kNext);
    Sleep(1000);
    EXPECT_EQ(TimesIn(player.Output(), "Playing: "), 2);
    EXPECT_GT(Brightness(window, PanelElement::kMeter), 0.01);

    Click(window, PanelElement::kExit);
    EXPECT_EQ(player.WaitForExit(), 0);
    EXPECT_TRUE(folder_.Has("data/MusicSettings.json"));
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
