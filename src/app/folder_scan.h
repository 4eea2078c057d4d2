// The music folders while the player runs. UI thread.
#pragma once

#include <cstdint>
#include <optional>

#include "app/player.h"

namespace hullrider {

// Has the folders scanned on a thread of its own; a scan that is under way is given up for it. The library stays as it
// is until PollFolderScan takes over what was found. At the start the folders are those of the run, later the
// configured ones, without any of which nothing is found.
void StartFolderScan(Player& player, ScanReason reason);

// The last steps of start-up: plays the first song and has the folders scanned beside it. Without a song to play, waits
// a moment for the scan, because a small library is found at once.
void BeginMusic(Player& player);

// The scan of the start without a thread, for the simulation.
void ScanAtOnce(Player& player);

// The songs that the scan under way has found so far; nothing when none is.
std::optional<int32_t> SongsFoundByScan(const Player& player);

// True while the library is empty and a scan may yet find something.
bool IsLookingForMusic(const Player& player);

// When the scan is over, puts what it has found in the library's place and saves the cache, if that changes anything.
// Songs whose folder could not be read stay, unless the user has asked for the scan. What plays goes on; out of silence
// a first song is started.
void PollFolderScan(Player& player);

}  // namespace hullrider
