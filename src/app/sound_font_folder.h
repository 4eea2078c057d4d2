// Changes the SoundFont folder while the player runs. UI thread.
#pragma once

#include <string>

#include "app/player.h"

namespace hullrider {

// Switches to the SoundFonts of that folder, starting with the first one, and saves the choice to "config.json". False,
// changing nothing, when the folder holds none or the first one cannot be loaded; the latter shows an error box.
bool TakeSoundFontFolder(Player& player, const std::string& folder);

}  // namespace hullrider
