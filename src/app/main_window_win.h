// The one top-level window: class, size, menu, timers, and the routing of its messages. UI thread.
#pragma once

#include <windows.h>

#include "app/player.h"

namespace hullrider {

// Registers the class and creates the window, hidden, without a menu; stores it and the scales in the player's shell
// state. The player must outlive the window. Null when the window cannot be created.
HWND CreateMainWindow(HINSTANCE instance, Player& player);

// The last step of start-up: opacity, timers and menu.
void ActivateMainWindow(HWND window, Player& player);

}  // namespace hullrider
