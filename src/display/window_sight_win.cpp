#include "display/window_sight_win.h"

#include <dwmapi.h>

namespace hullrider {

namespace {

// Has the visible style but is not shown: on another desktop, or a suspended app's.
bool IsCloaked(HWND window) {
    DWORD cloaked = 0;
    return SUCCEEDED(DwmGetWindowAttribute(window, DWMWA_CLOAKED, &cloaked, sizeof cloaked)) && cloaked != 0;
}

// Whether it hides what is below it. A window that may be translucent or have holes does not count.
bool IsOpaque(HWND window) {
    constexpr LONG_PTR kNoRedirectionBitmap = 0x00200000;
    constexpr LONG_PTR kSeeThrough = WS_EX_LAYERED | WS_EX_TRANSPARENT | kNoRedirectionBitmap;
    if (IsWindowVisible(window) == 0 || IsIconic(window) != 0) return false;
    if ((GetWindowLongPtrW(window, GWL_EXSTYLE) & kSeeThrough) != 0 || IsCloaked(window)) return false;
    RECT region;
    return GetWindowRgnBox(window, &region) == ERROR;
}

bool Covers(const RECT& outer, const RECT& inner) {
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
           outer.bottom >= inner.bottom;
}

}  // namespace

bool CanBeSeen(HWND window) {
    if (IsWindowVisible(window) == 0 || IsIconic(window) != 0 || IsCloaked(window)) return false;
    RECT own;
    GetWindowRect(window, &own);
    // The order may change during the walk; the limit makes sure that it ends.
    int most = 1000;
    for (HWND above = GetWindow(window, GW_HWNDPREV); above != nullptr && most > 0; --most) {
        RECT other;
        if (GetWindowRect(above, &other) != 0 && Covers(other, own) && IsOpaque(above)) return false;
        above = GetWindow(above, GW_HWNDPREV);
    }
    return true;
}

}  // namespace hullrider
