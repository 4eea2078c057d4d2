// Whether anyone can see a window. UI thread.
#pragma once

#include <windows.h>

namespace hullrider {

// False when the window is hidden, minimized, on another virtual desktop, or wholly behind another window such as a
// game that fills the screen: then there is nothing to draw for.
bool CanBeSeen(HWND window);

}  // namespace hullrider
