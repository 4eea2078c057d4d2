// The main window's menu bar. UI thread.
#pragma once

#include <windows.h>

#include <cstdint>

namespace hullrider {

// The caller owns the menu until it is attached to a window.
HMENU BuildMainMenu();

// The pop-up menu of the tray icon, to be destroyed by the caller: commands, and one item of its own, which is checked
// when closing the window leaves the player running.
inline constexpr int32_t kCloseToTrayItem = 200;
HMENU BuildTrayMenu(bool closesToTray);

}  // namespace hullrider
