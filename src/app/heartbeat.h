// What a running player does by itself, from one poll to the next. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Runs what workers have posted. Nothing before the player was started and after it was shut down.
void TakePosted(const Player& player);

// The 30 ms poll: takes what was posted; when the play window has ended, plays the next item; then looks into the
// command folder and at the controllers, takes over what a scan of the folders has found, and has changes saved.
void PollPlayer(Player& player);

}  // namespace hullrider
