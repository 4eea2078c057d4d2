// Songs dropped on the window. UI thread.
#pragma once

#include <string>
#include <vector>

#include "app/player.h"

namespace hullrider {

// Plays the songs among the files and folders at once, as a playlist for this run that replaces the one dropped before.
// Songs that cannot be played are skipped as usual. False, changing nothing, when there is no music among them; true
// also when the program was ended meanwhile.
bool PlayDropped(Player& player, const std::vector<std::string>& paths);

}  // namespace hullrider
