// Brings a player up. UI thread, once.
#pragma once

#include "app/player.h"

namespace hullrider {

// Fixes the data directory, loads the hotkeys, opens the controllers and runs the start-up sequence. Throws
// std::filesystem::filesystem_error when the data directory cannot be created, and std::runtime_error when the
// recording that was asked for cannot be written; nothing else ends the start.
void StartPlayer(Player& player);

// The ordered loader: audio, library, SoundFonts, settings, the companion game, the first song. A state file that is
// missing or unreadable leaves its defaults in place. Ends early when the player is shut down in its midst. Called by
// StartPlayer.
void RunStartupSequence(Player& player);

}  // namespace hullrider
