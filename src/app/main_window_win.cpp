#include "app/main_window_win.h"

#include <algorithm>

#include "app/menu_win.h"
#include "app/shutdown.h"
#include "app/startup.h"
#include "display/panel_view_win.h"

namespace hullrider {

namespace {

constexpr wchar_t kClassName[] = L"HelloWorldClass";
constexpr wchar_t kTitle[] = L"Hullrider Radio";
constexpr int kIconResource = 32512;

constexpr float kLargestWidth = 1250.0F;
constexpr float kLargestHeight = 458.0F;
constexpr float kScreenShare = 0.9F;

enum Timer : UINT_PTR {
    kPanelTimer = 1,     // redraws the panel
    kLatchTimer = 2,     // watches held keys
    kPollTimer = 3,      // song over, next song
    kSlowPollTimer = 4,  // stream titles, audiobook position
    kEndTimer = 1001,    // one-shot: --for
};

struct MainWindow {
    Player& player;
    PanelView panel;
};

MainWindow& Self(HWND window) {
    return *reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void RefreshPanel(HWND window) {
    if (IsWindowVisible(window) == 0 || IsIconic(window) != 0) return;
    MainWindow& self = Self(window);
    self.panel.Show(window, MakePanelText(self.player.state.playback));
}

// Ends the program in order: everything is saved and released, then the message loop is left.
void EndProgram(HWND window) {
    SaveAndShutdown(Self(window).player);
    for (const UINT_PTR timer : {kPanelTimer, kLatchTimer, kPollTimer}) KillTimer(window, timer);
    PostQuitMessage(0);
}

void OnTimer(HWND window, WPARAM timer) {
    switch (timer) {
        case kPanelTimer:
            RefreshPanel(window);
            break;
        case kPollTimer:
            PollPlayer(Self(window).player);
            break;
        case kEndTimer:
            EndProgram(window);
            break;
        default:
            break;
    }
}

void OnSize(HWND window, WPARAM kind, LPARAM size) {
    if (kind == SIZE_MINIMIZED) return;
    ShellState& shell = Self(window).player.state.shell;
    shell.horizontalScale = static_cast<float>(LOWORD(size)) / kPanelWidth;
    shell.verticalScale = static_cast<float>(HIWORD(size)) / kPanelHeight;
    InvalidateRect(window, nullptr, FALSE);
}

LRESULT CALLBACK MainWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (GetWindowLongPtrW(window, GWLP_USERDATA) == 0) return DefWindowProcW(window, message, wParam, lParam);
    switch (message) {
        case WM_COMMAND:
            if (LOWORD(wParam) == kExitCommand) EndProgram(window);
            return 0;
        case WM_TIMER:
            OnTimer(window, wParam);
            return 0;
        case WM_SIZE:
            OnSize(window, wParam, lParam);
            return 0;
        case WM_PAINT:
            Self(window).panel.Paint(window, Self(window).player.state.settings);
            return 0;
        case WM_ERASEBKGND:
            return 1;  // Paint covers every pixel
        case WM_ENDSESSION:
            // No destroy message follows when the user logs off.
            if (wParam != 0) DestroyWindow(window);
            return 0;
        case WM_DESTROY:
            EndProgram(window);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

bool RegisterMainClass(HINSTANCE instance) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = MainWindowProcedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = windowClass.hIconSm = LoadIconW(instance, MAKEINTRESOURCEW(kIconResource));
    windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the standard arrow
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = kClassName;
    return RegisterClassExW(&windowClass) != 0;
}

// The size of the client area: large enough to read from a distance, never larger than the screen.
SIZE ChooseClientSize() {
    const auto share = [](int metric) { return kScreenShare * static_cast<float>(GetSystemMetrics(metric)); };
    return {static_cast<LONG>(std::min(kLargestWidth, share(SM_CXSCREEN))),
            static_cast<LONG>(std::min(kLargestHeight, share(SM_CYSCREEN)))};
}

}  // namespace

HWND CreateMainWindow(HINSTANCE instance, Player& player) {
    if (!RegisterMainClass(instance)) return nullptr;
    const SIZE client = ChooseClientSize();
    ShellState& shell = player.state.shell;
    shell.horizontalScale = static_cast<float>(client.cx) / kPanelWidth;
    shell.verticalScale = static_cast<float>(client.cy) / kPanelHeight;

    RECT outer{0, 0, client.cx, client.cy};
    AdjustWindowRectEx(&outer, WS_OVERLAPPEDWINDOW, FALSE, WS_EX_LAYERED);
    const HWND window =
        CreateWindowExW(WS_EX_LAYERED, kClassName, kTitle, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, 0,
                        outer.right - outer.left, outer.bottom - outer.top, nullptr, nullptr, instance, nullptr);
    if (window == nullptr) return nullptr;
    shell.instance = instance;
    shell.mainWindow = window;

    static MainWindow self{player, {}};  // there is one
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&self));
    player.releaseFront = [window] {
        for (const UINT_PTR timer : {kPanelTimer, kLatchTimer, kPollTimer}) KillTimer(window, timer);
        Self(window).panel.ReleaseBuffer();
    };
    return window;
}

void ActivateMainWindow(HWND window, Player& player) {
    SetLayeredWindowAttributes(window, 0, static_cast<BYTE>(player.state.settings.windowAlpha), LWA_ALPHA);
    SetTimer(window, kPanelTimer, 250, nullptr);
    SetTimer(window, kLatchTimer, 100, nullptr);
    SetTimer(window, kPollTimer, 30, nullptr);
    SetTimer(window, kSlowPollTimer, 5000, nullptr);
    if (player.options.forSec) {
        const double ms = std::min(*player.options.forSec * 1000.0, static_cast<double>(USER_TIMER_MAXIMUM));
        SetTimer(window, kEndTimer, static_cast<UINT>(ms), nullptr);
    }
    SetMenu(window, BuildMainMenu());
}

}  // namespace hullrider
