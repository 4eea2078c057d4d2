// The player's hotkeys with the system, which sends them to the main window. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Registers the player's bindings as they are now, and names those that the system refuses on the error stream.
void TakeHotkeys(Player& player);

// Lets every one go, so that each key reaches the window that has the focus.
void ReleaseHotkeys(const Player& player);

}  // namespace hullrider
