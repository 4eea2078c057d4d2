// The player's periodic work. UI thread.
#pragma once

#include <chrono>

#include "app/player.h"

namespace hullrider {

// Runs what workers have posted. Does nothing before start-up is over and after shutdown.
void TakePosted(const Player& player);

// The 30 ms poll: runs posted work, plays the next item when the play window has ended, then polls the command file,
// the controllers and the folder scan, and has changes saved.
void PollPlayer(Player& player);

// The 5 s poll: reads what the playing station says of itself.
inline constexpr std::chrono::milliseconds kSlowPollPeriod{5000};
void PollSlowly(Player& player);

}  // namespace hullrider
