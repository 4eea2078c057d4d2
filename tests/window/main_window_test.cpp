// The main window in this process, whose messages can be seen.
#include "app/main_window_win.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "app/commands.h"
#include "display/panel_elements.h"
#include "display/panel_layout.h"
#include "tests/error_boxes.h"
#include "tests/eventually.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

constexpr UINT_PTR kPanelTimer = 1, kLatchTimer = 2, kPollTimer = 3, kSlowTimer = 4;

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() : window_(GetModuleHandleW(nullptr), player_) {
        player_.started = true;
        player_.state.shell.dataDirectory = folder_.Text();
    }

    // The end of one program is not the next one's.
    ~MainWindowTest() override {
        MSG quit;
        PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }

    void Activate() {
        const HICON icon = LoadIconW(nullptr, IDI_APPLICATION);
        SetClassLongPtrW(window_.Handle(), GCLP_HICON, reinterpret_cast<LONG_PTR>(icon));
        window_.Activate();
    }

    // How often each timer comes within so many milliseconds. Nothing is dispatched.
    static std::map<WPARAM, double> CountTimers(DWORD ms) {
        std::map<WPARAM, double> counts;
        MSG message;
        for (const ULONGLONG end = GetTickCount64() + ms; GetTickCount64() < end; Sleep(1)) {
            while (PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE) != 0) ++counts[message.wParam];
        }
        return counts;
    }

    bool HasTimer(UINT_PTR timer) const { return KillTimer(window_.Handle(), timer) != 0; }

    const ErrorBoxes boxes_;
    TemporaryFolder folder_;
    Player player_;
    MainWindow window_;
};

TEST_F(MainWindowTest, WithoutItsIconItSaysSoAndEnds) {
    SetClassLongPtrW(window_.Handle(), GCLP_HICON, 0);
    window_.Activate();
    EXPECT_EQ(ErrorBoxes::last, "Could not load icon!");
    EXPECT_TRUE(player_.shutDown);
    EXPECT_FALSE(HasTimer(kPollTimer));
}

TEST_F(MainWindowTest, ItsTimersKeepTheirPeriodsUntilTheExit) {
    Activate();
    ASSERT_FALSE(player_.shutDown) << ErrorBoxes::last;
    std::map<WPARAM, double> counts = CountTimers(2000);
    EXPECT_NEAR(counts[kPanelTimer], 8.0, 1.0);
    EXPECT_NEAR(counts[kLatchTimer], 20.0, 3.0);
    EXPECT_NEAR(counts[kPollTimer], 66.0, 16.0);
    EXPECT_EQ(counts[kSlowTimer], 0.0);
    SendMessageW(window_.Handle(), WM_COMMAND, kExitCommand, 0);
    EXPECT_TRUE(player_.shutDown);
    for (const UINT_PTR timer : {kPanelTimer, kLatchTimer, kPollTimer}) EXPECT_FALSE(HasTimer(timer)) << timer;
    EXPECT_TRUE(HasTimer(kSlowTimer)) << "the window's own end takes it along";
}

TEST_F(MainWindowTest, ThePanelsExitEndsAllTimers) {
    Activate();
    const HWND window = window_.Handle();
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    SendMessageW(window, WM_TIMER, kPanelTimer, 0);  // shows what there is to click
    RECT client;
    GetClientRect(window, &client);
    const PixelBox exit = FitPanel(client.right, client.bottom).ToPixels(BoxOf(PanelElement::kExit));
    const LPARAM place = MAKELPARAM(exit.x + exit.width / 2, exit.y + exit.height / 2);
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    SendMessageW(window, WM_LBUTTONUP, 0, place);
    EXPECT_TRUE(Eventually([&] {
        MSG message;
        while (!player_.shutDown && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
        return player_.shutDown;
    }));
    for (const UINT_PTR timer : {kPanelTimer, kLatchTimer, kPollTimer, kSlowTimer}) {
        EXPECT_FALSE(HasTimer(timer)) << timer;
    }
}

}  // namespace
}  // namespace hullrider
