// The music folders while the player runs. UI thread.
#pragma once

#include <cstdint>
#include <optional>

#include "app/player.h"

namespace hullrider {

// Has the configured folders scanned on a thread of its own; a scan that is under way is given up for it. The library
// stays as it is until PollFolderScan takes over what was found, which without any folder is nothing.
void StartFolderScan(Player& player);

// The songs that the scan under way has found so far; nothing when none is.
std::optional<int32_t> SongsFoundByScan(const Player& player);

// When the scan is over, puts what it has found in the library's place and saves the cache. What plays goes on; out of
// silence a first song is started.
void PollFolderScan(Player& player);

}  // namespace hullrider
