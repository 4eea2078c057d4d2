// The main window's menu bar. UI thread.
#pragma once

#include <windows.h>

namespace hullrider {

// The caller owns the menu until it is attached to a window.
HMENU BuildMainMenu();

}  // namespace hullrider
