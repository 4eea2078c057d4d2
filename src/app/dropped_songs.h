// Songs that are dropped on the window. UI thread.
#pragma once

#include <string>
#include <vector>

#include "app/player.h"

namespace hullrider {

// Plays the songs among the files and folders now, one playlist of this run; it takes the place of the one dropped
// before. Songs that cannot be played are passed over as any others. False, and nothing has changed, when there is no
// music among them; true also when the program was ended meanwhile.
bool PlayDropped(Player& player, const std::vector<std::string>& paths);

}  // namespace hullrider
