// Registers the player's hotkeys with the system, which sends them to the main window. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Registers the current bindings, and reports those that the system refuses on the error stream.
void TakeHotkeys(Player& player);

// Unregisters all, so that each key reaches the window that has the focus.
void ReleaseHotkeys(const Player& player);

}  // namespace hullrider
