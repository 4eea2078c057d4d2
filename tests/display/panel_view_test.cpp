// The panel in a real window of this process.
#include "display/panel_view_win.h"

#include <gtest/gtest.h>
#include <psapi.h>

#include <algorithm>
#include <vector>

#include "state/command_ids.h"

namespace hullrider {
namespace {

constexpr int kWidth = 1000, kHeight = 310;

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const view = reinterpret_cast<PanelView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (view != nullptr) {
        if (const auto answer = view->HandleMessage(message, wParam, lParam)) return *answer;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class PanelViewTest : public testing::Test {
protected:
    PanelViewTest()
        : view_({[this](const PanelAction& action) { actions_.push_back(action); },
                 [this] {
                     return ++levelsAsked_, StereoLevel{0.5F, 0.7F};
                 }}) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = Procedure;
        windowClass.lpszClassName = L"PanelViewTest";
        RegisterClassW(&windowClass);
        window_ = CreateWindowW(windowClass.lpszClassName, L"", WS_POPUP, 0, 0, kWidth, kHeight, nullptr, nullptr,
                                nullptr, nullptr);
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&view_));
        view_.Attach(window_);
        model_.transport = Transport::kPlaying;
        model_.title = "Slow Aurora";
        model_.album = "Lanterns";
        model_.kind = "MIDI";
        model_.timePlayed = "0:23";
        model_.volume = 0.5F;
        ShowWindow(window_, SW_SHOWNA);
        view_.Show(model_, MakePanelTheme({}));
        Pump(0);
    }
    ~PanelViewTest() override {
        view_.Release();
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }

    static void Pump(DWORD ms) {
        const ULONGLONG end = GetTickCount64() + ms;
        do {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
            Sleep(ms == 0 ? 0 : 5);
        } while (GetTickCount64() < end);
    }

    static PixelBox PixelsOf(PanelElement element) { return FitPanel(kWidth, kHeight).ToPixels(BoxOf(element)); }

    static LPARAM MiddleOf(PanelElement element) {
        const PixelBox box = PixelsOf(element);
        return MAKELPARAM(box.x + box.width / 2, box.y + box.height / 2);
    }

    // Pixels of the element, as they stand in the window, in which red is over 128.
    int BrightPixels(PanelElement element) const {
        const PixelBox box = PixelsOf(element);
        const HDC dc = GetDC(window_);
        int count = 0;
        for (int y = box.y; y < box.y + box.height; ++y) {
            for (int x = box.x; x < box.x + box.width; ++x) count += GetRValue(GetPixel(dc, x, y)) > 128 ? 1 : 0;
        }
        ReleaseDC(window_, dc);
        return count;
    }

    PanelView view_;
    HWND window_ = nullptr;
    PanelModel model_;
    std::vector<PanelAction> actions_;
    int levelsAsked_ = 0;
};

TEST_F(PanelViewTest, TurnsClicksAndTheWheelIntoActions) {
    SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, MiddleOf(PanelElement::kNext));
    SendMessageW(window_, WM_LBUTTONUP, 0, MiddleOf(PanelElement::kNext));
    ASSERT_EQ(actions_.size(), 1U);
    EXPECT_EQ(actions_.back().command, kNextSongCommand);
    SendMessageW(window_, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(actions_.back().command, kSetVolumeCommand);
    EXPECT_NEAR(actions_.back().value, 0.45, 1e-6);
    SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, MiddleOf(PanelElement::kVolume));
    SendMessageW(window_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(0xFF00, 0));  // far to the left of the window
    EXPECT_EQ(actions_.back().value, 0.0);
    SendMessageW(window_, WM_LBUTTONUP, 0, 0);
    EXPECT_NE(GetCapture(), window_);
}

TEST_F(PanelViewTest, NothingMovesWhileItIsHiddenOrPaused) {
    const auto askedIn = [&](DWORD ms) {
        const int before = levelsAsked_;
        Pump(ms);
        return levelsAsked_ - before;
    };
    const auto moves = [&] {
        const int before = levelsAsked_;
        for (int i = 0; i < 200 && levelsAsked_ < before + 4; ++i) Pump(100);
        return levelsAsked_ >= before + 4;
    };
    EXPECT_TRUE(moves());
    EXPECT_GT(BrightPixels(PanelElement::kMeter), 60);
    ShowWindow(window_, SW_HIDE);
    EXPECT_FALSE(view_.CanBeSeen());
    Pump(100);
    EXPECT_EQ(askedIn(300), 0);
    EXPECT_EQ(KillTimer(window_, kPanelMotionTimer), FALSE) << "its timer runs on";
    ShowWindow(window_, SW_SHOWNA);
    view_.Show(model_, MakePanelTheme({}));
    EXPECT_TRUE(moves());
    model_.transport = Transport::kPaused;
    view_.Show(model_, MakePanelTheme({}));
    EXPECT_EQ(askedIn(4500), 0);  // the bars fall, and then the timer ends
    for (int i = 0; i < 200 && BrightPixels(PanelElement::kMeter) > 0; ++i) Pump(100);
    Pump(500);
    EXPECT_EQ(KillTimer(window_, kPanelMotionTimer), FALSE) << "its timer runs on";
}

TEST_F(PanelViewTest, TheMeterComesToRestThoughItWasHiddenWhileItFell) {
    for (int i = 0; i < 200 && BrightPixels(PanelElement::kMeter) < 60; ++i) Pump(100);
    ShowWindow(window_, SW_HIDE);
    EXPECT_FALSE(view_.CanBeSeen());
    model_.transport = Transport::kStopped;
    ShowWindow(window_, SW_SHOWNA);
    view_.Show(model_, MakePanelTheme({}));
    for (int i = 0; i < 200 && BrightPixels(PanelElement::kMeter) > 0; ++i) Pump(100);
    EXPECT_EQ(BrightPixels(PanelElement::kMeter), 0);
}

TEST_F(PanelViewTest, TheOpenTooltipFollowsTheVolume) {
    const HWND tips = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr);
    ASSERT_NE(tips, nullptr);
    SendMessageW(tips, TTM_SETDELAYTIME, TTDT_INITIAL, 10);
    const PixelBox knob = PixelsOf(PanelElement::kVolume);
    POINT mouse{knob.x + knob.width / 2, knob.y + knob.height / 2};
    ClientToScreen(window_, &mouse);
    SetCursorPos(mouse.x, mouse.y);
    for (int i = 0; i < 100 && IsWindowVisible(tips) == 0; ++i) {
        SendMessageW(window_, WM_MOUSEMOVE, 0, MiddleOf(PanelElement::kVolume));
        Pump(50);
    }
    ASSERT_NE(IsWindowVisible(tips), 0);
    const auto shown = [&] {
        wchar_t text[200] = {};
        GetWindowTextW(tips, text, 200);
        return std::wstring(text);
    };
    EXPECT_EQ(shown().substr(0, 11), L"Volume 50 %");
    model_.volume = 0.65F;
    view_.Show(model_, MakePanelTheme({}));
    EXPECT_EQ(shown().substr(0, 11), L"Volume 65 %");
    EXPECT_NE(IsWindowVisible(tips), 0);
}

TEST_F(PanelViewTest, TheKeyboardReachesEveryKeyAndLeavesTheRestToTheWindow) {
    const auto press = [&](WPARAM key) { return view_.HandleMessage(WM_KEYDOWN, key, 1).has_value(); };
    EXPECT_FALSE(press(VK_SPACE) || press(VK_UP) || press(VK_RETURN)) << "nothing has the focus";
    const int before = BrightPixels(PanelElement::kPlayPause);
    EXPECT_TRUE(press(VK_TAB) && press(VK_TAB));
    Pump(50);
    EXPECT_GT(BrightPixels(PanelElement::kPlayPause), before + 30);
    EXPECT_TRUE(press(VK_SPACE));
    EXPECT_EQ(actions_.back().command, kPlayPauseCommand);
    EXPECT_FALSE(press(VK_UP));
    EXPECT_TRUE(press(VK_ESCAPE));
    Pump(50);
    EXPECT_EQ(BrightPixels(PanelElement::kPlayPause), before);
}

TEST_F(PanelViewTest, TheSongGoesWhereItsBarIsLetGoUnlessAnotherSongHasBegun) {
    model_.canSeek = true;
    view_.Show(model_, MakePanelTheme({}));
    const auto drag = [&](bool songChanges) {
        SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, MiddleOf(PanelElement::kSongBar));
        SendMessageW(window_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(kWidth - 1, 1));
        EXPECT_EQ(GetCapture(), window_);
        if (songChanges) model_.title = "Another";
        view_.Show(model_, MakePanelTheme({}));
        SendMessageW(window_, WM_LBUTTONUP, 0, MAKELPARAM(kWidth - 1, 1));
        EXPECT_NE(GetCapture(), window_);
    };
    drag(false);
    ASSERT_EQ(actions_.size(), 1U);
    EXPECT_EQ(actions_[0], (PanelAction{kSeekCommand, 1.0}));
    drag(true);
    EXPECT_EQ(actions_.size(), 1U);
}

TEST_F(PanelViewTest, AWindowWhollyBehindAnotherIsNotSeen) {
    const HWND cover = CreateWindowW(L"PanelViewTest", L"", WS_POPUP | WS_VISIBLE, 0, 0, kWidth + 40, kHeight + 40,
                                     nullptr, nullptr, nullptr, nullptr);
    SetWindowPos(cover, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_FALSE(view_.CanBeSeen());
    EXPECT_EQ(KillTimer(window_, kPanelMotionTimer), FALSE) << "it moves for nobody";
    SetWindowPos(cover, nullptr, 5, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(view_.CanBeSeen());
    DestroyWindow(cover);
    EXPECT_TRUE(view_.CanBeSeen());
}

// Wine counts no objects; but its handles are numbers in a table whose free places are used again, so that the highest
// of some new ones grows with what is not deleted.
DWORD GdiObjectsInUse() {
    const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (counted != 0) return counted;
    std::vector<HBRUSH> brushes;
    DWORD highest = 0;
    for (int i = 0; i < 64; ++i) {
        brushes.push_back(CreateSolidBrush(RGB(1, 2, i)));
        highest = std::max(highest, static_cast<DWORD>(reinterpret_cast<UINT_PTR>(brushes.back()) & 0xFFFFU));
    }
    for (const HBRUSH brush : brushes) DeleteObject(brush);
    return highest;
}

TEST_F(PanelViewTest, TenThousandRedrawsLeaveNothingBehind) {
    const auto redraw = [&](int times) {
        for (int i = 0; i < times; ++i) {
            model_.timePlayed = std::to_string(i % 10) + ":0" + std::to_string(i / 10 % 10);
            model_.songPosition = std::to_string(i);
            model_.position = i % 100 / 100.0;
            model_.volume = static_cast<float>(i / 100 % 7) / 7.0F;
            view_.Show(model_, MakePanelTheme({}));
            UpdateWindow(window_);
            if (i % 1000 == 999) SetWindowPos(window_, nullptr, 0, 0, kWidth - i / 1000, kHeight, SWP_NOZORDER);
        }
    };
    const auto memory = [] {
        PROCESS_MEMORY_COUNTERS_EX counters{};
        GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                             sizeof counters);
        return counters.PrivateUsage;
    };
    redraw(1000);
    const DWORD objects = GdiObjectsInUse();
    const SIZE_T before = memory();
    redraw(10000);
    RecordProperty("memoryGrowthKiB", static_cast<int>((memory() - before) / 1024));
    EXPECT_LE(GdiObjectsInUse(), objects + 16);
    EXPECT_LT(memory(), before + (4U << 20U));
}

}  // namespace
}  // namespace hullrider
