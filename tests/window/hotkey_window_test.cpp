// Hotkey Options in the real program.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <climits>

#include "tests/window/controls_win.h"
#include "tests/window/window_fixture_win.h"

namespace hullrider {
namespace {

class HotkeyWindowTest : public PlayerWindowTest {
protected:
    void SetUp() override { folder_.Write("music/A/tone.mp3", ToneWav(440.0, 100.0)); }

    HWND OpenHotkeys() {
        Choose(kHotkeyOptionsCommand);
        const HWND hotkeys = player_->WaitForWindow(L"CustomHotKeyDialogClass", L"Hotkey Options");
        EXPECT_NE(hotkeys, nullptr) << player_->Output();
        return hotkeys;
    }
};

// Those of the row on the keyboard's page.
HWND KeyFieldOf(HWND window, const wchar_t* label) {
    return GetWindow(FindControl(window, L"STATIC", label), GW_HWNDNEXT);
}
HWND RemarkOf(HWND window, const wchar_t* label) {
    return GetWindow(KeyFieldOf(window, label), GW_HWNDNEXT);
}

void Press(const std::vector<BYTE>& keys) {
    for (auto key = keys.begin(); key != keys.end(); ++key) keybd_event(*key, 0, 0, 0);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) keybd_event(*key, 0, KEYEVENTF_KEYUP, 0);
}

// Clicks the field, presses the keys and waits for what the field says then.
bool SetKey(HWND field, const std::vector<BYTE>& keys, const std::wstring& expected) {
    PostMessageW(field, BM_CLICK, 0, 0);
    if (!Eventually([&] { return TextIn(field) == L"Press a key..."; })) return false;
    Press(keys);
    return Eventually([&] { return TextIn(field) == expected; });
}

TEST_F(HotkeyWindowTest, AKeyWorksAtOnceAndAfterARestartWhenItIsSaved) {
    const std::vector<BYTE> keys{VK_CONTROL, VK_SHIFT, VK_F9};
    {
        PlayerProcess& player = StartWithMusic();
        const HWND window = OpenHotkeys();
        ASSERT_TRUE(SetKey(KeyFieldOf(window, L"Next Song:"), keys, L"Ctrl+Shift+F9"));
        Press(keys);
        EXPECT_TRUE(player.WaitForOutput("Playing: ", 2)) << player.Output();

        // While a field waits, a key that is in force is only pressed.
        const HWND other = KeyFieldOf(window, L"Play\\Pause:"), remark = RemarkOf(window, L"Play\\Pause:");
        EXPECT_TRUE(SetKey(other, keys, L"Ctrl+Shift+F9"));
        EXPECT_TRUE(Eventually([&] { return TextIn(remark) == L"Also Next Song"; }));
        EXPECT_FALSE(player.WaitForOutput("Playing: ", 3, 0)) << player.Output();
        EXPECT_TRUE(SetKey(other, {VK_ESCAPE}, L"Ctrl+Shift+F9"));
        EXPECT_TRUE(SetKey(other, {VK_DELETE}, L"None"));
        EXPECT_FALSE(folder_.Has("data/hotkeyConfig.json"));
        PostMessageW(FindControl(window, L"BUTTON", L"&Save"), BM_CLICK, 0, 0);
        EXPECT_TRUE(Eventually([&] { return folder_.Has("data/hotkeyConfig.json"); }));
        PostMessageW(window_, WM_CLOSE, 0, 0);
        EXPECT_EQ(player.WaitForExit(), 0);
    }
    PlayerProcess& player = StartWithMusic();
    Press(keys);
    EXPECT_TRUE(player.WaitForOutput("Playing: ", 2)) << player.Output();
    const HWND window = OpenHotkeys();
    EXPECT_EQ(TextIn(KeyFieldOf(window, L"Next Song:")), L"Ctrl+Shift+F9");
    EXPECT_EQ(TextIn(KeyFieldOf(window, L"Play\\Pause:")), L"None");
}

TEST_F(HotkeyWindowTest, ClosingItAsksOnlyWhenSomethingWouldBeLost) {
    const std::vector<BYTE> keys{VK_CONTROL, VK_SHIFT, VK_F9};
    const auto close = [&](HWND window) { PostMessageW(window, WM_CLOSE, 0, 0); };
    const auto answer = [&](WORD id) {
        const HWND question = player_->WaitForWindow(L"#32770", L"Hotkey Options");
        ASSERT_NE(question, nullptr);
        PostMessageW(question, WM_COMMAND, id, 0);
        EXPECT_TRUE(Eventually([&] { return IsWindow(question) == 0; }));
    };
    const auto isGone = [](HWND window) { return Eventually([&] { return IsWindow(window) == 0; }); };
    StartWithMusic();
    HWND window = OpenHotkeys();
    close(window);
    EXPECT_TRUE(isGone(window)) << "nothing has changed";

    window = OpenHotkeys();
    ASSERT_TRUE(SetKey(KeyFieldOf(window, L"Next Song:"), keys, L"Ctrl+Shift+F9"));
    close(window);
    answer(IDCANCEL);
    EXPECT_NE(IsWindow(window), 0);
    EXPECT_FALSE(folder_.Has("data/hotkeyConfig.json"));
    close(window);
    answer(IDYES);
    EXPECT_TRUE(isGone(window));
    EXPECT_TRUE(folder_.Has("data/hotkeyConfig.json"));

    const std::string saved = folder_.Read("data/hotkeyConfig.json");
    window = OpenHotkeys();
    ASSERT_TRUE(SetKey(KeyFieldOf(window, L"Next Song:"), {VK_DELETE}, L"None"));
    close(window);
    answer(IDNO);
    EXPECT_TRUE(isGone(window));
    EXPECT_EQ(folder_.Read("data/hotkeyConfig.json"), saved);

    window = OpenHotkeys();
    EXPECT_EQ(TextIn(KeyFieldOf(window, L"Next Song:")), L"None") << "in force until the end";
    ASSERT_TRUE(SetKey(KeyFieldOf(window, L"Previous Song:"), keys, L"Ctrl+Shift+F9"));
    close(window);
    ASSERT_NE(player_->WaitForWindow(L"#32770", L"Hotkey Options"), nullptr);
    EXPECT_EQ(Exit(), 0) << "an open question does not hold up the end";
}

// Texts that users of the game know, its slips of the pen included. The first sixteen actions have keys; on the
// controllers' page, which was made later, there are all.
TEST_F(HotkeyWindowTest, TheActionsStandThereInTheirOrder) {
    const std::vector<std::wstring> labels{L"Next Song:",
                                           L"Previous Song:",
                                           L"Play\\Pause:",
                                           L"Stop\\Start Music:",
                                           L"Volume Toggle:",
                                           L"Next Sound Font:",
                                           L"Previous Sound Font:",
                                           L"Favorite Count Up:",
                                           L"Favorite Count Down:",
                                           L"Quit:",
                                           L"Volume Up:",
                                           L"Volume Down:",
                                           L"Music Home Button:",
                                           L"Next Radio Station",
                                           L"Previous Radio Station:",
                                           L"Key Bind 1:",
                                           L"Key Bind 2:",
                                           L"Key Bind 3:",
                                           L"Key Bind 4:",
                                           L"Joysitck Toggle:",
                                           L"Button Rumble:",
                                           L"Toggle Rumble:"};
    StartWithMusic();
    const HWND window = OpenHotkeys();
    const auto isLabel = [&](HWND control) {
        return std::find(labels.begin(), labels.end(), TextIn(control)) != labels.end();
    };
    std::vector<HWND> shown;
    for (HWND control = GetWindow(window, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        if (isLabel(control)) shown.push_back(control);
    }
    ASSERT_EQ(shown.size(), 16U + labels.size());
    std::pair<LONG, LONG> before{LONG_MIN, LONG_MIN};  // down the first column, then down the second
    for (size_t i = 0; i < shown.size(); ++i) {
        const bool isKey = i < 16;
        if (i == 16) before = {LONG_MIN, LONG_MIN};
        EXPECT_EQ(TextIn(shown[i]), labels[isKey ? i : i - 16]);
        EXPECT_EQ(IsWindowVisible(shown[i]) != 0, isKey) << "only one page is seen";
        RECT box{};
        GetWindowRect(shown[i], &box);
        const std::pair<LONG, LONG> place(box.left, box.top);
        EXPECT_GT(place, before) << i;
        before = place;
    }
}

TEST_F(HotkeyWindowTest, TheKeyboardIsNotLostWithAPageThatIsHidden) {
    StartWithMusic();
    const HWND window = OpenHotkeys();
    const HWND field = KeyFieldOf(window, L"Next Song:");
    const auto hasFocus = [&](HWND control) {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
        return info.hwndFocus == control;
    };
    ASSERT_TRUE(SetKey(field, {VK_ESCAPE}, TextIn(field)));
    ASSERT_TRUE(Eventually([&] { return hasFocus(field); }));
    Press({VK_CONTROL, VK_TAB});
    EXPECT_TRUE(Eventually([&] { return IsWindowVisible(field) == 0; }));
    SendMessageW(window, WM_NULL, 0, 0);  // answered when the key has been dealt with
    EXPECT_TRUE(hasFocus(FindControl(window, WC_TABCONTROLW, nullptr)));
}

}  // namespace
}  // namespace hullrider
