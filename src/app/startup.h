// Starts a player. UI thread, once.
#pragma once

#include "app/player.h"

namespace hullrider {

// Chooses and creates the data directory, loads the hotkeys, opens the controllers and runs the start-up sequence.
// Throws std::filesystem::filesystem_error when the data directory cannot be created, and std::runtime_error when the
// requested recording cannot be written; no other failure stops the start.
void StartPlayer(Player& player);

// The ordered loader: audio, library, SoundFonts, settings, the companion game, the first song. A state file that is
// missing or unreadable leaves its defaults in place. Stops early when the player is shut down meanwhile. Called by
// StartPlayer.
void RunStartupSequence(Player& player);

}  // namespace hullrider
