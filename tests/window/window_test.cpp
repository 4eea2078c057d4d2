// The real program in its real window.
#include <shlobj.h>

#include <algorithm>

#include "display/panel_elements.h"
#include "input/hotkey_file.h"
#include "tests/window/window_fixture_win.h"

namespace hullrider {
namespace {

using WindowTest = PlayerWindowTest;

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

TEST_F(WindowTest, AWindowLeftOutsideTheScreenComesBackWithItsTitleInSight) {
    folder_.Write("data/ShellOptions.json", R"({"x": -690, "y": 600, "width": 700, "height": 300})");
    Start();
    RECT box{};
    EXPECT_TRUE(Eventually([&] { return GetWindowRect(window_, &box) != 0 && box.right >= 100; })) << box.right;
    EXPECT_EQ(box.right - box.left, 700);
}

TEST_F(WindowTest, IsNeverTooSmallToBeRead) {
    folder_.Write("data/ShellOptions.json", R"({"x": 50, "y": 60, "width": 116, "height": 62})");
    Start();
    const auto isLargeEnough = [&] {
        RECT client{};
        GetClientRect(window_, &client);
        return client.right >= 400 && client.bottom >= 124;
    };
    EXPECT_TRUE(Eventually(isLargeEnough)) << "left so small by an earlier version";
    for (const auto& [width, height] : {std::pair{1, 1}, {420, 50}, {50, 600}}) {
        SetWindowPos(window_, nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOMOVE);
        EXPECT_TRUE(Eventually(isLargeEnough)) << width << " x " << height;
    }
}

TEST_F(WindowTest, ShowsWhatPlaysAtEverySizeAndItsKeysWork) {
    folder_.Write("music/Album/tone.mp3", ToneWav(440.0, 60.0));
    PlayerProcess& player = Start({"--music", folder_.At("music")});
    for (const auto& [width, height] : {std::pair{700, 300}, {1100, 400}}) {
        SetWindowPos(window_, nullptr, 0, 0, width, height, SWP_NOZORDER);
        Sleep(1000);
        for (const PanelElement element : {PanelElement::kKind, PanelElement::kUpperLine, PanelElement::kTitle,
                                           PanelElement::kClock, PanelElement::kMeter, PanelElement::kSongBar}) {
            EXPECT_TRUE(Eventually([&] { return Brightness(window_, element) > 0.01; }))
                << IndexOf(element) << " at width " << width;
        }
        EXPECT_EQ(Brightness(window_, PanelElement::kSoundFont), 0.0) << "a tone has no SoundFont";
    }

    const double playing = Brightness(window_, PanelElement::kPlayPause);
    Click(window_, PanelElement::kPlayPause);
    EXPECT_TRUE(Eventually([&] { return Brightness(window_, PanelElement::kMeter) == 0.0; }))
        << "paused, the meter falls";
    EXPECT_NE(Brightness(window_, PanelElement::kPlayPause), playing) << "the key shows what it would do";

    EXPECT_FALSE(player.WaitForOutput("Playing: ", 2, 0)) << player.Output();
    Click(window_, PanelElement::kNext);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 2)) << player.Output();
    EXPECT_TRUE(Eventually([&] { return Brightness(window_, PanelElement::kMeter) > 0.01; }));
    EXPECT_FALSE(player.WaitForOutput("Playing: ", 3, 0)) << player.Output();

    Click(window_, PanelElement::kExit);
    EXPECT_EQ(player.WaitForExit(), 0);
    EXPECT_TRUE(folder_.Has("data/MusicSettings.json"));
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

TEST_F(WindowTest, EveryOptionWindowOpensOnceAndCloses) {
    PlayerProcess& player = Start();
    const struct {
        int32_t command;
        const wchar_t *className, *title;
    } windows[] = {{kFoldersCommand, L"CustomFolderDialogClass", L"Folder Information"},
                   {kStationsCommand, L"CustomIFolderDialogClass", L"Internet Folder Information"},
                   {kRadioOptionsCommand, L"CustomRadioDialogClass", L"Radio Options"},
                   {kFavoriteOptionsCommand, L"CustomFavDialogClass", L"Favorite Options"},
                   {kHotkeyOptionsCommand, L"CustomHotKeyDialogClass", L"Hotkey Options"},
                   {kVisualOptionsCommand, L"CustomVisualDialogClass", L"Visual Options"},
                   {kEqualizerCommand, L"CustomEQDialogClass", L"Custom User EQ"},
                   {kCustomStationCommand, L"CustomUserRadioDialogClass", L"Custom User Radio Maker"},
                   {kSongInfoCommand, L"CustomInfoDialogClass", L"Song Information"},
                   {kAboutCommand, L"CustomAboutDialogClass", L"About Hullrider Radio"},
                   {kUpdateCommand, L"CustomSearchDialogClass", L"Update Hullrider"}};
    for (const auto& [command, className, title] : windows) {
        Choose(command);
        const HWND opened = player.WaitForWindow(className, title);
        ASSERT_NE(opened, nullptr) << command;
        SendMessageW(window_, WM_COMMAND, static_cast<WPARAM>(command), 0);
        EXPECT_EQ(player.CountWindows(className), 1) << "opened twice";
        PostMessageW(opened, WM_CLOSE, 0, 0);
        EXPECT_TRUE(Eventually([&] { return IsWindow(opened) == 0; })) << command;
    }
    EXPECT_NE(IsWindow(window_), 0);
}

TEST_F(WindowTest, TheMenusCommandsAreHeard) {
    folder_.Write("music/A/tone.mp3", ToneWav(440.0, 100.0));
    PlayerProcess& player = StartWithMusic();
    Choose(kNextSongCommand);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 2)) << player.Output();
    Choose(kStopCommand);
    Choose(kStartCommand);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 3)) << player.Output();
    PostMessageW(window_, WM_APPCOMMAND, 0, MAKELPARAM(0, APPCOMMAND_MEDIA_NEXTTRACK));
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 4)) << player.Output();
    Choose(kFavoriteUpCommand);
    Choose(kNextSoundFontCommand);
    Choose(kPlayGameCommand);
    Choose(9999);
    EXPECT_EQ(Exit(), 0);
    EXPECT_NE(folder_.Read("data/favorite.json").find("tone.mp3"), std::string::npos);
    EXPECT_TRUE(folder_.Has("data/config.json"));
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

    PlayerProcess& player = StartWithMusic();
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

TEST_F(WindowTest, TheFrameComesOffAndBackWithItsMenu) {
    Start();
    const auto hasFrame = [&] { return (GetWindowLongPtrW(window_, GWL_STYLE) & WS_CAPTION) == WS_CAPTION; };
    RECT framed, bare, again;
    GetClientRect(window_, &framed);
    PostMessageW(window_, WM_KEYDOWN, VK_F11, 0);
    EXPECT_TRUE(Eventually([&] { return !hasFrame(); }));
    Sleep(100);
    GetClientRect(window_, &bare);
    EXPECT_GT(bare.bottom, framed.bottom);
    PostMessageW(window_, WM_KEYDOWN, VK_F11, 0);
    EXPECT_TRUE(Eventually(hasFrame));
    Sleep(100);
    GetClientRect(window_, &again);
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
    Start();
    const auto hasFrame = [&] { return (GetWindowLongPtrW(window_, GWL_STYLE) & WS_CAPTION) == WS_CAPTION; };
    Sleep(5000);
    SetCursorPos(10, 10);
    Sleep(500);
    SetCursorPos(20, 20);
    const ULONGLONG moved = GetTickCount64();
    Sleep(8000);
    const bool framed = hasFrame();
    const bool soonEnough = GetTickCount64() - moved < 9500;  // a busy machine may have slept longer
    EXPECT_TRUE(framed || !soonEnough) << "the time counts from the last movement";
    EXPECT_TRUE(Eventually([&] { return !hasFrame(); }));
}

TEST_F(WindowTest, ASecondStartBringsTheFirstToTheFront) {
    PlayerProcess first(Arguments());
    const HWND window = first.WaitForWindow(kClass, kTitle);
    ASSERT_NE(window, nullptr);
    ShowWindow(window, SW_MINIMIZE);
    ASSERT_TRUE(Eventually([&] { return IsIconic(window) != 0; }));
    PlayerProcess second(Arguments());
    EXPECT_EQ(second.WaitForExit(), 0);
    EXPECT_TRUE(Eventually([&] { return IsIconic(window) == 0; }));

    // Of another folder there may be another one.
    PlayerProcess other({"--data-dir", folder_.At("other"), "--output", "null", "--for", "1"});
    EXPECT_EQ(other.WaitForExit(), 0);
    EXPECT_TRUE(folder_.Has("other/MusicSettings.json"));
}

TEST_F(WindowTest, ASecondStartHandsItsFilesToTheFirst) {
    folder_.Write("music/Album/tone.mp3", ToneWav(440.0, 100.0));
    const std::string song = folder_.Write("else/\xC3\x84 b.mp3", ToneWav(550.0, 100.0));
    PlayerProcess& first = StartWithMusic();
    PlayerProcess second(Arguments({song}));
    EXPECT_EQ(second.WaitForExit(), 0);
    EXPECT_TRUE(first.WaitForOutput("Playing: Queued songs / \xC3\x84 b [0:00 - ", 1)) << first.Output();
    Choose(kNextSongCommand);
    EXPECT_TRUE(first.WaitForOutput("Playing: Album / tone", 2)) << first.Output();

    // Another program's message of the same kind.
    char junk[] = "junk";
    COPYDATASTRUCT copy{1, sizeof junk, junk};
    EXPECT_EQ(SendMessageW(window_, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&copy)), 0);
    EXPECT_EQ(Exit(), 0);
}

TEST_F(WindowTest, ComesBackWhereItWasAndStaysInTheTrayWhenAsked) {
    folder_.Write("data/ShellOptions.json",
                  R"({"x": 60, "y": 80, "width": 700, "height": "high", "closeToTray": true})");
    RECT box{};
    {
        Start();
        SetWindowPos(window_, nullptr, 120, 90, 640, 300, SWP_NOZORDER);
        EXPECT_TRUE(Eventually([&] { return GetWindowRect(window_, &box) != 0 && box.right - box.left == 640; }));
        PostMessageW(window_, WM_CLOSE, 0, 0);
        EXPECT_TRUE(Eventually([&] { return IsWindowVisible(window_) == 0; }));
        PlayerProcess second(Arguments());
        EXPECT_EQ(second.WaitForExit(), 0);
        EXPECT_TRUE(Eventually([&] { return IsWindowVisible(window_) != 0; }));
        EXPECT_EQ(Exit(), 0);
    }
    std::string options = folder_.Read("data/ShellOptions.json");
    options.replace(options.find("\"closeToTray\": true"), 19, "\"closeToTray\": false");
    folder_.Write("data/ShellOptions.json", options);
    PlayerProcess& player = Start();
    RECT after{};
    EXPECT_TRUE(Eventually([&] { return GetWindowRect(window_, &after) != 0 && EqualRect(&box, &after) != 0; }))
        << after.left << ' ' << after.top << ' ' << after.right << ' ' << after.bottom;
    ShowWindow(window_, SW_MAXIMIZE);
    EXPECT_TRUE(Eventually([&] { return IsZoomed(window_) != 0; }));
    PostMessageW(window_, WM_CLOSE, 0, 0);
    EXPECT_EQ(player.WaitForExit(), 0);
    EXPECT_NE(folder_.Read("data/ShellOptions.json").find("\"maximized\": true"), std::string::npos);
}

// What the system hands over with a drop, put into the other process's memory.
void Drop(HWND window, const std::string& path) {
    struct {
        DROPFILES head{};
        wchar_t path[512] = {};
    } drop;
    drop.head.pFiles = sizeof(DROPFILES);
    drop.head.fWide = TRUE;
    WideFromUtf8(path).copy(drop.path, 510);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const HANDLE handle = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, process);
    void* const there = VirtualAllocEx(handle, nullptr, sizeof drop, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    ASSERT_NE(WriteProcessMemory(handle, there, &drop, sizeof drop, nullptr), 0);
    CloseHandle(handle);
    PostMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(there), 0);
}

TEST_F(WindowTest, PlaysWhatIsDroppedAndObeysItsKeys) {
    folder_.Write("music/Album/tone.mp3", ToneWav(440.0, 60.0));
    folder_.Write("elsewhere/first.mp3", ToneWav(550.0, 60.0));
    folder_.Write("elsewhere/second.mp3", ToneWav(660.0, 60.0));
    folder_.Write("elsewhere/notes.txt", "not music");
    PlayerProcess& player = Start({"--music", folder_.At("music")});
    ASSERT_TRUE(player.WaitForOutput("Playing: Album / tone", 1)) << player.Output();
    Drop(window_, folder_.At("elsewhere"));
    EXPECT_TRUE(player.WaitForOutput("Playing: elsewhere / ", 1)) << player.Output();
    PostMessageW(window_, WM_KEYDOWN, VK_RIGHT, 1);
    EXPECT_TRUE(player.WaitForOutput("Playing: elsewhere / ", 2)) << player.Output();

    Drop(window_, folder_.At("elsewhere/notes.txt"));
    const HWND box = player.WaitForWindow(L"#32770", L"Error");
    ASSERT_NE(box, nullptr);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    PostMessageW(window_, WM_KEYDOWN, VK_SPACE, 1);
    EXPECT_TRUE(Eventually([&] { return Brightness(window_, PanelElement::kMeter) == 0.0; })) << "paused";
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
