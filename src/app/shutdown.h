// Lets a player go. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Saves every state file in its order, releases the front, the sound and the controllers. Does nothing the second time,
// and nothing before the player was started.
void SaveAndShutdown(Player& player);

}  // namespace hullrider
