// Lets a player go. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Saves every state file in its order, releases the front, the sound and the controllers. Does nothing the second time.
// Before the end of start-up, saves what has been loaded by then and has start-up go no further.
void SaveAndShutdown(Player& player);

}  // namespace hullrider
