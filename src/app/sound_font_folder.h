// The folder of the SoundFonts while the player runs. UI thread.
#pragma once

#include <string>

#include "app/player.h"

namespace hullrider {

// Uses the SoundFonts of that folder from now on, beginning with its first one, and saves the choice to "config.json".
// False, with everything as before, when the folder holds none or the first one cannot be loaded; the latter is told
// in an error box.
bool TakeSoundFontFolder(Player& player, const std::string& folder);

}  // namespace hullrider
