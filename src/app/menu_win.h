// The main window's menu bar. UI thread.
#pragma once

#include <windows.h>

namespace hullrider {

// Identifiers that WM_COMMAND carries.
enum Command : WORD { kExitCommand = 3 };

// The caller owns the menu until it is attached to a window.
HMENU BuildMainMenu();

}  // namespace hullrider
