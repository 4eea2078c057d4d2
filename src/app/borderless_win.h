// The main window without its frame and menu bar, by hand or when the mouse has rested for a while. UI thread.
#pragma once

#include <windows.h>

namespace hullrider {

inline constexpr UINT_PTR kIdleTimer = 101;  // one-shot

class Borderless {
public:
    ~Borderless();  // a menu that is not attached is destroyed

    // Takes the frame and the menu bar off the window, or gives them back.
    void Toggle(HWND window);

    // Starts the idle timer anew whenever the mouse has moved since the last call; ends it unless `automatic`.
    void WatchMouse(HWND window, bool automatic);

    // When the idle timer has run out: takes the frame off if it is there.
    void OnIdle(HWND window);

private:
    HMENU detachedMenu_ = nullptr;
    POINT lastCursor_{LONG_MIN, LONG_MIN};
    bool watching_ = false;
};

}  // namespace hullrider
