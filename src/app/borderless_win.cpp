#include "app/borderless_win.h"

namespace hullrider {

namespace {

constexpr UINT kIdleMs = 10000;

bool IsBorderless(HWND window) {
    return (GetWindowLongPtrW(window, GWL_STYLE) & LONG_PTR{WS_POPUP}) != 0;
}

}  // namespace

Borderless::~Borderless() {
    if (detachedMenu_ != nullptr) DestroyMenu(detachedMenu_);
}

void Borderless::Toggle(HWND window) {
    auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    if (IsBorderless(window)) {
        style = (style & ~DWORD{WS_POPUP}) | DWORD{WS_OVERLAPPEDWINDOW};
        SetWindowLongPtrW(window, GWL_STYLE, static_cast<LONG_PTR>(style));
        SetMenu(window, detachedMenu_);
        detachedMenu_ = nullptr;
    } else {
        style = (style & ~DWORD{WS_OVERLAPPEDWINDOW}) | DWORD{WS_POPUP};
        SetWindowLongPtrW(window, GWL_STYLE, static_cast<LONG_PTR>(style));
        detachedMenu_ = GetMenu(window);
        SetMenu(window, nullptr);
    }
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED | SWP_NOOWNERZORDER);
    InvalidateRect(window, nullptr, TRUE);
}

void Borderless::WatchMouse(HWND window, bool automatic) {
    if (!automatic) {
        if (watching_) KillTimer(window, kIdleTimer);
        watching_ = false;
        return;
    }
    POINT cursor{};
    GetCursorPos(&cursor);
    if (watching_ && cursor.x == lastCursor_.x && cursor.y == lastCursor_.y) return;
    watching_ = true;
    lastCursor_ = cursor;
    KillTimer(window, kIdleTimer);
    SetTimer(window, kIdleTimer, kIdleMs, nullptr);
}

void Borderless::OnIdle(HWND window) {
    KillTimer(window, kIdleTimer);
    if (!IsBorderless(window)) Toggle(window);
}

}  // namespace hullrider
