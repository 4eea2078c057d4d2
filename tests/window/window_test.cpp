// The real program in its real window.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/commands.h"
#include "app/menu_win.h"
#include "display/panel_layout.h"
#include "input/hotkey_file.h"
#include "platform/text_win.h"
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
TEST(MenuBar, HoldsTheMenusItems) {
    const HMENU menu = BuildMainMenu();
    ASSERT_EQ(GetMenuItemCount(menu), static_cast<int>(MainMenu().size()));
    wchar_t text[64] = {};
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const MenuPopup& popup = MainMenu()[static_cast<size_t>(i)];
        GetMenuStringW(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
        EXPECT_EQ(Utf8FromWide(text), popup.text);
        const HMENU items = GetSubMenu(menu, i);
        ASSERT_EQ(GetMenuItemCount(items), static_cast<int>(popup.commands.size()));
        for (int j = 0; j < GetMenuItemCount(items); ++j) {
            const int32_t id = popup.commands[static_cast<size_t>(j)];
            EXPECT_EQ(GetMenuItemID(items, j), static_cast<UINT>(id));
            GetMenuStringW(items, static_cast<UINT>(j), text, 64, MF_BYPOSITION);
            EXPECT_EQ(Utf8FromWide(text), FindCommand(id)->text);
        }
    }
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

TEST_F(WindowTest, EveryOptionWindowOpensOnceAndCloses) {
    PlayerProcess player(Arguments());
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    for (const Command& command : Commands()) {
        if (command.window.className == nullptr) continue;
        const std::wstring className = WideFromUtf8(command.window.className);
        const std::wstring title = WideFromUtf8(command.window.title);
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(command.id), 0);
        const HWND opened = player.WaitForWindow(className.c_str(), title.c_str());
        ASSERT_NE(opened, nullptr) << command.window.title;
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(command.id), 0);
        Sleep(100);
        EXPECT_EQ(FindWindowExW(nullptr, opened, className.c_str(), nullptr), nullptr) << "opened twice";
        PostMessageW(opened, WM_CLOSE, 0, 0);
        for (int i = 0; i < 500 && IsWindow(opened) != 0; ++i) Sleep(20);
        EXPECT_EQ(IsWindow(opened), 0) << command.window.title;
    }
    EXPECT_NE(IsWindow(window), 0);
}

TEST_F(WindowTest, TheMenusCommandsAreHeard) {
    folder_.Write("music/A/tone.mp3", ToneWav(440.0, 100.0));
    PlayerProcess player(Arguments({"--music", folder_.At("music")}));
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 1)) << player.Output();
    const auto command = [&](int32_t id) { PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0); };
    command(kNextSongCommand);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 2)) << player.Output();
    command(kStopCommand);
    command(kStartCommand);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 3)) << player.Output();
    command(kFavoriteUpCommand);
    command(kNextSoundFontCommand);
    command(kPlayGameCommand);
    command(9999);
    command(kExitCommand);
    EXPECT_EQ(player.WaitForExit(), 0);
    EXPECT_NE(folder_.Read("data/favorite.json").find("tone.mp3"), std::string::npos);
}

// Presses a key as a keyboard does: whoever has registered it gets it, whichever window has the focus.
void PressKey(WORD key, WORD modifier = 0) {
    if (modifier != 0) keybd_event(static_cast<BYTE>(modifier), 0, 0, 0);
    keybd_event(static_cast<BYTE>(key), 0, 0, 0);
    keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
    if (modifier != 0) keybd_event(static_cast<BYTE>(modifier), 0, KEYEVENTF_KEYUP, 0);
}

TEST_F(WindowTest, HotkeysWorkWhileAnotherProgramHasTheFocus) {
    folder_.Write("music/A/tone.mp3", ToneWav(440.0, 100.0));
    HotkeyBindings bindings = BuiltInHotkeys();
    bindings[kNextSongKey] = {VK_F5, true, false, false};
    bindings[kQuitKey] = {VK_F6, true, false, false};
    bindings[kVolumeUpKey] = {VK_F7, true, false, false};
    std::filesystem::create_directories(folder_.Path() / "data");
    ASSERT_TRUE(SaveHotkeyConfig(folder_.At("data/hotkeyConfig.json"), bindings));
    // Some other program has one of the keys already.
    ASSERT_NE(RegisterHotKey(nullptr, 1, MOD_CONTROL, VK_F7), 0);

    PlayerProcess player(Arguments({"--music", folder_.At("music")}));
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 1)) << player.Output();
    EXPECT_TRUE(player.WaitForOutput("The hotkey 10 (Volume Up:) is not available: ", 1)) << player.Output();

    const HWND other = CreateWindowExW(0, L"EDIT", L"another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 100,
                                       nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    ASSERT_EQ(GetForegroundWindow(), other);
    PressKey(VK_F5, VK_CONTROL);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 2)) << player.Output();
    PressKey(VK_MEDIA_NEXT_TRACK);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 3)) << player.Output();
    PressKey(VK_F5);  // without Ctrl it is not ours
    Sleep(500);
    EXPECT_FALSE(player.WaitForOutput("Playing: ", 4, 0)) << player.Output();
    EXPECT_EQ(GetForegroundWindow(), other);
    PressKey(VK_F6, VK_CONTROL);
    EXPECT_EQ(player.WaitForExit(), 0);
    DestroyWindow(other);
    UnregisterHotKey(nullptr, 1);
}

TEST_F(WindowTest, MediaKeysArriveAsAppCommandsToo) {
    folder_.Write("music/A/tone.mp3", ToneWav(440.0, 100.0));
    PlayerProcess player(Arguments({"--music", folder_.At("music")}));
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 1));
    PostMessageW(window, WM_APPCOMMAND, 0, MAKELPARAM(0, APPCOMMAND_MEDIA_NEXTTRACK));
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 2)) << player.Output();
}

TEST_F(WindowTest, TheFrameComesOffAndBackWithItsMenu) {
    PlayerProcess player(Arguments());
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    const auto hasFrame = [&] { return (GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION; };
    const auto waitForFrame = [&](bool wanted) {
        for (int i = 0; i < 100 && hasFrame() != wanted; ++i) Sleep(20);
        Sleep(100);
        return hasFrame() == wanted;
    };
    RECT framed, bare, again;
    GetClientRect(window, &framed);
    PostMessageW(window, WM_KEYDOWN, VK_F11, 0);
    EXPECT_TRUE(waitForFrame(false));
    GetClientRect(window, &bare);
    EXPECT_GT(bare.bottom, framed.bottom);
    PostMessageW(window, WM_KEYDOWN, VK_F11, 0);
    EXPECT_TRUE(waitForFrame(true));
    GetClientRect(window, &again);
    EXPECT_EQ(again.bottom, framed.bottom);
}

TEST_F(WindowTest, TheFrameComesOffByItselfWhenTheMouseRests) {
    {
        PlayerProcess player(Arguments({"--for", "0"}));
        ASSERT_EQ(player.WaitForExit(), 0);
    }
    std::string settings = folder_.Read("data/MusicSettings.json");
    const std::string key = "\"borderlessAuto\": ";
    const size_t at = settings.find(key + "0");
    ASSERT_NE(at, std::string::npos);
    settings[at + key.size()] = '1';
    folder_.Write("data/MusicSettings.json", settings);
    PlayerProcess player(Arguments());
    const HWND window = player.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    const auto hasFrame = [&] { return (GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION; };
    Sleep(5000);
    SetCursorPos(10, 10);
    Sleep(500);
    SetCursorPos(20, 20);
    Sleep(8000);
    EXPECT_TRUE(hasFrame());  // the time counts from the last movement
    for (int i = 0; i < 200 && hasFrame(); ++i) Sleep(50);
    EXPECT_FALSE(hasFrame());
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
