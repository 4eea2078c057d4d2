// Whether the user can see a window. UI thread.
#pragma once

#include <windows.h>

namespace hullrider {

// False when the window is hidden, minimized, on another virtual desktop, or wholly behind another window such as a
// game that fills the screen: then drawing would be wasted.
bool CanBeSeen(HWND window);

}  // namespace hullrider
