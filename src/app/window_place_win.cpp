#include "app/window_place_win.h"

#include "app/window_place.h"

namespace hullrider {

int RestorePlace(HWND window, const ShellOptions& options, int showCommand) {
    const bool asksForNothing = showCommand == SW_SHOWNORMAL || showCommand == SW_SHOWDEFAULT;
    const int show = options.isMaximized && asksForNothing ? SW_SHOWMAXIMIZED : showCommand;
    const RECT box{options.x, options.y, options.x + options.width, options.y + options.height};
    if (options.width <= 0 || options.height <= 0) return show;
    // Its screen may be gone.
    const HMONITOR monitor = MonitorFromRect(&box, MONITOR_DEFAULTTONULL);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    if (monitor == nullptr || GetMonitorInfoW(monitor, &screen) == 0) return show;
    const RECT& work = screen.rcWork;
    const int32_t titleHeight = GetSystemMetrics(SM_CYCAPTION) + GetSystemMetrics(SM_CYSIZEFRAME);
    const ScreenBox place = BringTitleIntoSight({box.left, box.top, box.right, box.bottom},
                                                {work.left, work.top, work.right, work.bottom}, titleHeight);
    // Twice: on a screen with another scale, the system changes the size the first time.
    for (int i = 0; i < 2; ++i) {
        SetWindowPos(window, nullptr, place.left, place.top, options.width, options.height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return show;
}

void NoteWindowPlace(HWND window, ShellOptions& options) {
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    if ((style & WS_POPUP) != 0 || (style & WS_VISIBLE) == 0 || IsIconic(window) != 0) return;
    options.isMaximized = IsZoomed(window) != 0;
    RECT box;
    if (options.isMaximized || GetWindowRect(window, &box) == 0) return;
    options.x = box.left;
    options.y = box.top;
    options.width = box.right - box.left;
    options.height = box.bottom - box.top;
}

}  // namespace hullrider
