// Shuts a player down. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Saves every state file, releases the front, the sound and the controllers. Does nothing the second time. During
// start-up, saves only what has been loaded so far, and start-up stops.
void SaveAndShutdown(Player& player);

}  // namespace hullrider
