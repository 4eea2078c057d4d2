#include "app/main_window_win.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

#include "app/commands.h"
#include "app/handed_files.h"
#include "app/heartbeat.h"
#include "app/menu_win.h"
#include "app/option_windows_win.h"
#include "app/player_hotkeys_win.h"
#include "app/shutdown.h"
#include "app/single_instance_win.h"
#include "app/window_place_win.h"
#include "dialogs/dialogs_win.h"
#include "input/hotkeys_win.h"
#include "platform/console.h"
#include "platform/dropped_files_win.h"
#include "platform/message_box.h"
#include "platform/post.h"
#include "platform/window_class_win.h"
#include "playback/seek.h"
#include "playback/stream_loudness.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

constexpr wchar_t kClassName[] = L"HelloWorldClass";
constexpr wchar_t kTitle[] = L"Hullrider Radio";
constexpr const char* kName = "Hullrider Radio";

constexpr float kLargestWidth = 1250.0F;
constexpr float kLargestHeight = 458.0F;
constexpr float kScreenShare = 0.9F;
constexpr UINT kPostedMessage = WM_APP + 2;  // the tray icon uses WM_APP + 1

enum Timer : UINT_PTR {
    kPanelTimer = 1,     // level meter, redraws the panel
    kLatchTimer = 2,     // watches held keys
    kPollTimer = 3,      // song over, next song
    kSlowPollTimer = 4,  // stream titles, audiobook position
    kEndTimer = 1001,    // one-shot: --for
    kNoticeTimer = 2001  // one-shot: ends a short notice on the panel
};

// The size of the client area: large enough to read from a distance, never larger than the screen.
SIZE ChooseClientSize() {
    const auto share = [](int metric) { return kScreenShare * static_cast<float>(GetSystemMetrics(metric)); };
    return {static_cast<LONG>(std::min(kLargestWidth, share(SM_CXSCREEN))),
            static_cast<LONG>(std::min(kLargestHeight, share(SM_CYSCREEN)))};
}

DWORD StyleOf(HWND window) {
    return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
}

// Smaller, the panel could not be read.
SIZE SmallestClientSize(HWND window) {
    const int dpi = static_cast<int>(GetDpiForWindow(window));
    return {MulDiv(400, dpi, USER_DEFAULT_SCREEN_DPI), MulDiv(124, dpi, USER_DEFAULT_SCREEN_DPI)};
}

}  // namespace

MainWindow::MainWindow(HINSTANCE instance, Player& player)
    : player_(player),
      panel_({[this](const PanelAction& action) { OnPanelAction(action); },
              [this] { return ReadLevel(player_.state.playback); }}) {
    if (!RegisterWindowClass(instance, kClassName, Procedure, COLOR_WINDOW)) return;
    const SIZE client = ChooseClientSize();
    ShellState& shell = player_.state.shell;
    shell.horizontalScale = static_cast<float>(client.cx) / kPanelWidth;
    shell.verticalScale = static_cast<float>(client.cy) / kPanelHeight;

    RECT outer{0, 0, client.cx, client.cy};
    AdjustWindowRectEx(&outer, WS_OVERLAPPEDWINDOW, FALSE, WS_EX_LAYERED);
    window_ = CreateWindowExW(WS_EX_LAYERED, kClassName, kTitle, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, 0,
                              outer.right - outer.left, outer.bottom - outer.top, nullptr, nullptr, instance, nullptr);
    if (window_ == nullptr) return;
    shell.instance = instance;
    shell.mainWindow = window_;
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    DragAcceptFiles(window_, TRUE);
    panel_.Attach(window_);
    SetPostWaker([window = window_] { PostMessageW(window, kPostedMessage, 0, 0); });
    player_.takeHotkeys = [this] { TakeHotkeys(player_); };
    player_.openWindow = [this](int32_t command) { OpenOptionWindow(player_, command); };
    player_.bringToFront = [this] { BringToFront(); };
    player_.endProgram = [this] { EndProgram(); };
    player_.releaseFront = [this] {
        CloseDialogs();
        NoteWindowPlace(window_, player_.state.shell.options);
        tray_.Remove();
        KillTimers();
        panel_.Release();
        UnregisterHotkeys(window_);
    };
}

MainWindow::~MainWindow() {
    player_.releaseFront = player_.takeHotkeys = player_.bringToFront = player_.endProgram = nullptr;
    player_.openWindow = nullptr;
    if (window_ == nullptr) return;
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

void MainWindow::Activate() {
    if (GetClassLongPtrW(window_, GCLP_HICON) == 0) {
        ShowErrorBox("Could not load icon!");
        return EndProgram();
    }
    SetLayeredWindowAttributes(window_, 0, static_cast<BYTE>(player_.state.settings.windowAlpha), LWA_ALPHA);
    SetTimer(window_, kPanelTimer, 250, nullptr);
    SetTimer(window_, kLatchTimer, 100, nullptr);
    SetTimer(window_, kPollTimer, 30, nullptr);
    SetTimer(window_, kSlowPollTimer, static_cast<UINT>(kSlowPollPeriod.count()), nullptr);
    if (player_.options.forSec) {
        const double ms = std::min(*player_.options.forSec * 1000.0, static_cast<double>(USER_TIMER_MAXIMUM));
        SetTimer(window_, kEndTimer, static_cast<UINT>(ms), nullptr);
    }
    SetMenu(window_, BuildMainMenu());
    tray_.Add(window_);
}

LRESULT CALLBACK MainWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    try {
        return self->OnMessage(message, wParam, lParam);
    } catch (const std::exception& failure) {
        // Exceptions must not unwind through the system's frames. The message is dropped; the music plays on.
        PrintErrorLine(failure.what());
        return 0;
    }
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const std::optional<LRESULT> answer = panel_.HandleMessage(message, wParam, lParam)) return *answer;
    if (const std::optional<TrayIcon::Click> click = tray_.Understand(message, lParam)) {
        OnTrayClick(*click);
        return 0;
    }
    if (message == SingleInstance::ShowMessage()) {
        BringToFront();
        return 0;
    }
    if (const std::optional<LRESULT> answer = OnInput(message, wParam, lParam)) return *answer;
    if (const std::optional<LRESULT> answer = OnPlaceOrEnd(message, wParam, lParam)) return *answer;
    return DefWindowProcW(window_, message, wParam, lParam);
}

// Input from the user, timers and workers.
std::optional<LRESULT> MainWindow::OnInput(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            Run(LOWORD(wParam));
            return 0;
        case WM_HOTKEY:
            Run(CommandOfHotkey(static_cast<int32_t>(wParam)));
            return 0;
        case WM_APPCOMMAND: {
            const int32_t action = ActionOfAppCommand(lParam);
            if (action < 0) return std::nullopt;
            Run(CommandOfHotkey(action));
            return TRUE;
        }
        case WM_KEYDOWN:
            OnKey(wParam, (HIWORD(lParam) & KF_REPEAT) != 0);
            return 0;
        case WM_DROPFILES:
            OnDrop(reinterpret_cast<HDROP>(wParam));
            return 0;
        case WM_COPYDATA: {
            const std::vector<std::string> files = SingleInstance::FilesIn(lParam);
            PlayFiles(player_, files);
            return files.empty() ? FALSE : TRUE;
        }
        case WM_TIMER:
            OnTimer(wParam);
            return 0;
        case kPostedMessage:
            PollPlayer(player_);
            return 0;
        default:
            return std::nullopt;
    }
}

// Moving, resizing and closing the window.
std::optional<LRESULT> MainWindow::OnPlaceOrEnd(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_EXITSIZEMOVE:
            NoteWindowPlace(window_, player_.state.shell.options);
            return 0;
        case WM_GETMINMAXINFO:
            LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_SIZE:
            OnSize(wParam, lParam);
            return 0;
        case WM_DPICHANGED:
            FollowDpi(*reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_CLOSE:
            NoteWindowPlace(window_, player_.state.shell.options);  // while it is still visible
            if (!player_.state.shell.options.closesToTray || !tray_.IsShown()) return std::nullopt;
            ShowWindow(window_, SW_HIDE);
            return 0;
        case WM_ENDSESSION:
            // No WM_DESTROY follows when the user logs off.
            if (wParam != 0) EndProgram();
            return 0;
        case WM_DESTROY:
            EndProgram();
            return 0;
        default:
            return std::nullopt;
    }
}

void MainWindow::OnTimer(WPARAM timer) {
    switch (timer) {
        case kPanelTimer:
            SampleLoudness(player_.state.playback);
            RefreshPanel();
            tray_.SetTip(TrayTip());
            break;
        case kSlowPollTimer:
            PollSlowly(player_);
            break;
        case kPollTimer:
            PollPlayer(player_);
            borderless_.WatchMouse(window_, player_.state.settings.borderlessAuto != 0);
            break;
        case kLatchTimer:
            shortcuts_.ReleaseLatches();
            break;
        case kIdleTimer:
            borderless_.OnIdle(window_);
            break;
        case kNoticeTimer:
            KillTimer(window_, kNoticeTimer);
            RefreshPanel();
            break;
        case kEndTimer:
            EndProgram();
            break;
        default:
            break;
    }
}

void MainWindow::OnPanelAction(const PanelAction& action) {
    AppState& app = player_.state;
    switch (action.command) {
        case kSetVolumeCommand:
            SetVolumeLevel(app, static_cast<float>(action.value));
            return RefreshPanel();
        case kSeekCommand:
            SeekTo(app.playback, action.value * app.playback.songLengthSec);
            return RefreshPanel();
        case kExitCommand:
            KillTimer(window_, kSlowPollTimer);
            break;
        default:
            break;
    }
    // Posted, as from the menu bar: the command may destroy the window, and the panel must be done with the click by
    // then.
    PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(action.command), 0);
}

void MainWindow::OnKey(WPARAM key, bool isRepeated) {
    if (key == VK_F11) borderless_.Toggle(window_);
    Run(shortcuts_.CommandOfKey(key, isRepeated));
}

void MainWindow::OnDrop(HDROP drop) {
    PlayFiles(player_, TakeDroppedPaths(drop));
}

void MainWindow::OnTrayClick(TrayIcon::Click click) {
    if (click == TrayIcon::Click::kShow) return BringToFront();
    const int32_t command = tray_.AskMenu(player_.state.shell.options.closesToTray);
    // Posted, as from the menu bar: the command may end the program.
    if (command != 0) PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

// Shows the effect at once.
void MainWindow::Run(int32_t command) {
    if (RunCommand(player_, command)) RefreshPanel();
}

void MainWindow::BringToFront() {
    ShowWindow(window_, IsIconic(window_) != 0 ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(window_);
}

void MainWindow::OnSize(WPARAM kind, LPARAM size) {
    if (kind == SIZE_MINIMIZED) return;
    ShellState& shell = player_.state.shell;
    shell.horizontalScale = static_cast<float>(LOWORD(size)) / kPanelWidth;
    shell.verticalScale = static_cast<float>(HIWORD(size)) / kPanelHeight;
    InvalidateRect(window_, nullptr, FALSE);
    if (kind == SIZE_RESTORED) MakeRoomForMenu(HIWORD(size));
}

void MainWindow::LimitSize(MINMAXINFO& limits) const {
    const SIZE client = SmallestClientSize(window_);
    RECT outer{0, 0, client.cx, client.cy};
    AdjustWindowRectExForDpi(&outer, StyleOf(window_), GetMenu(window_) != nullptr, WS_EX_LAYERED,
                             GetDpiForWindow(window_));
    limits.ptMinTrackSize = {outer.right - outer.left, outer.bottom - outer.top};
}

// In a narrow window the menu takes several rows, which the limit does not know of.
void MainWindow::MakeRoomForMenu(int32_t clientHeight) const {
    const LONG missing = SmallestClientSize(window_).cy - clientHeight;
    RECT outer;
    if (missing <= 0 || GetMenu(window_) == nullptr || GetWindowRect(window_, &outer) == 0) return;
    SetWindowPos(window_, nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top + missing,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// On a monitor with another scale, the system proposes the size at which the window looks the same.
void MainWindow::FollowDpi(const RECT& proposed) {
    SetWindowPos(window_, nullptr, proposed.left, proposed.top, proposed.right - proposed.left,
                 proposed.bottom - proposed.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

std::string MainWindow::TrayTip() const {
    const std::string& title = player_.state.playback.item.title;
    return title.empty() ? std::string(kName) : title + " - " + kName;
}

void MainWindow::RefreshPanel() {
    if (!panel_.CanBeSeen()) return;
    const AppState& app = player_.state;
    panel_.Show(MakePanelModel(app, ReadChannel(app.playback)), MakePanelTheme(app.settings));
}

// Saves and releases everything, then leaves the message loop.
void MainWindow::EndProgram() {
    if (const auto onEnd = std::exchange(onEnd_, nullptr)) onEnd();
    SaveAndShutdown(player_);
    KillTimers();
    PostQuitMessage(0);
}

void MainWindow::KillTimers() {
    for (const UINT_PTR timer : {kPanelTimer, kLatchTimer, kPollTimer}) KillTimer(window_, timer);
}

}  // namespace hullrider
