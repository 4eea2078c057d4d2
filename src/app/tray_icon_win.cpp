#include "app/tray_icon_win.h"

#include <algorithm>
#include <cwchar>

#include "platform/text_win.h"
#include "state/command_ids.h"

namespace hullrider {

namespace {

constexpr UINT kIconMessage = WM_APP + 1;
constexpr UINT kIconId = 1;
constexpr int32_t kCloseToTrayItem = 300;  // not a CommandId

void AppendCommand(HMENU menu, int32_t id, const wchar_t* text) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), text);
}

HMENU BuildTrayMenu(bool closesToTray) {
    const HMENU menu = CreatePopupMenu();
    AppendCommand(menu, kShowPlayerCommand, L"&Show the Player");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendCommand(menu, kPlayPauseCommand, L"&Play/Pause");
    AppendCommand(menu, kNextSongCommand, L"&Next Song");
    AppendCommand(menu, kPreviousSongCommand, L"P&revious Song");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendCommand(menu, kCloseToTrayItem, L"&Keep Playing When the Window Is Closed");
    CheckMenuItem(menu, kCloseToTrayItem, closesToTray ? MF_CHECKED : MF_UNCHECKED);
    AppendCommand(menu, kExitCommand, L"E&xit");
    SetMenuDefaultItem(menu, kShowPlayerCommand, FALSE);
    return menu;
}

}  // namespace

void TrayIcon::Add(HWND window) {
    taskbarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");
    data_.cbSize = sizeof data_;
    data_.hWnd = window;
    data_.uID = kIconId;
    data_.uFlags = NIF_ICON | NIF_MESSAGE | NIF_TIP;
    data_.uCallbackMessage = kIconMessage;
    data_.hIcon = reinterpret_cast<HICON>(GetClassLongPtrW(window, GCLP_HICONSM));
    ChangeWindowMessageFilterEx(window, taskbarCreated_, MSGFLT_ALLOW, nullptr);
    isShown_ = Shell_NotifyIconW(NIM_ADD, &data_) != 0;
}

void TrayIcon::Remove() {
    if (isShown_) Shell_NotifyIconW(NIM_DELETE, &data_);
    isShown_ = false;
    taskbarCreated_ = 0;
}

// The taskbar sends the message when it restarts and when its scale changes. In the latter case the icon still exists,
// and could not be added again.
void TrayIcon::ShowAgain() {
    Shell_NotifyIconW(NIM_DELETE, &data_);
    isShown_ = Shell_NotifyIconW(NIM_ADD, &data_) != 0;
}

void TrayIcon::SetTip(const std::string& text) {
    if (text == tip_) return;
    tip_ = text;
    const std::wstring wide = WideFromUtf8(text);
    const size_t length = std::min(wide.size(), std::size(data_.szTip) - 1);
    std::wmemcpy(data_.szTip, wide.data(), length);
    data_.szTip[length] = L'\0';
    if (isShown_) Shell_NotifyIconW(NIM_MODIFY, &data_);
}

std::optional<TrayIcon::Click> TrayIcon::Understand(UINT message, LPARAM lParam) {
    if (message == taskbarCreated_ && taskbarCreated_ != 0) ShowAgain();
    if (message != kIconMessage) return std::nullopt;
    if (lParam == WM_LBUTTONUP) return Click::kShow;
    if (lParam == WM_RBUTTONUP) return Click::kMenu;
    return std::nullopt;
}

int32_t TrayIcon::AskMenu(bool& closesToTray) const {
    const HWND window = data_.hWnd;
    const HMENU menu = BuildTrayMenu(closesToTray);
    POINT mouse{};
    GetCursorPos(&mouse);
    // Otherwise the menu does not close on a click outside it.
    SetForegroundWindow(window);
    const int item = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, mouse.x, mouse.y, 0, window, nullptr);
    PostMessageW(window, WM_NULL, 0, 0);  // otherwise the next menu may close at once
    DestroyMenu(menu);
    if (item != kCloseToTrayItem) return item;
    closesToTray = !closesToTray;
    return 0;
}

}  // namespace hullrider
