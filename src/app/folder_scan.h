// Scans of the music folders while the player runs. UI thread.
#pragma once

#include <cstdint>
#include <optional>

#include "app/player.h"

namespace hullrider {

// Starts a scan on a worker and abandons a running one. The library stays unchanged until PollFolderScan takes over the
// result. At start-up the folders are those of the run, later the configured ones; without any, the result is empty.
void StartFolderScan(Player& player, ScanReason reason);

// Plays the first song at start-up and starts the scan. Without a song to play, waits a moment for the scan, because a
// small library is found at once.
void BeginMusic(Player& player);

// The start-up scan without a thread, for the simulation.
void ScanAtOnce(Player& player);

// The number of songs that the running scan has found so far; empty when none is running.
std::optional<int32_t> SongsFoundByScan(const Player& player);

// True while there is nothing to play and a running scan may still find music.
bool IsLookingForMusic(const Player& player);

// When the scan is over, replaces the library with the result and saves the cache, if that changes anything. Songs in
// unreadable folders stay, unless the user asked for the scan. The current item plays on; if nothing plays, a song is
// started.
void PollFolderScan(Player& player);

}  // namespace hullrider
