// Hides the main window's frame and menu bar, on command or while the mouse is idle. UI thread.
#pragma once

#include <windows.h>

namespace hullrider {

inline constexpr UINT_PTR kIdleTimer = 101;  // one-shot

class Borderless {
public:
    ~Borderless();  // destroys the menu if it is detached

    // Removes the frame and the menu bar, or restores them.
    void Toggle(HWND window);

    // Restarts the idle timer if the mouse has moved since the last call; stops it unless `automatic`.
    void WatchMouse(HWND window, bool automatic);

    // On the idle timer: removes the frame if it is shown.
    void OnIdle(HWND window);

private:
    HMENU detachedMenu_ = nullptr;
    POINT lastCursor_{LONG_MIN, LONG_MIN};
    bool watching_ = false;
};

}  // namespace hullrider
