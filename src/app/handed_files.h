// Files and folders handed to the player: dropped on its window, opened with it, or named on its command line. Their
// songs are queued ("playback/queue.h"). UI thread.
#pragma once

#include <string>
#include <vector>

#include "app/player.h"

namespace hullrider {

// Looks for the songs on a worker, then plays them at once, in place of what was queued before. What comes within two
// seconds is queued behind the rest instead, because the system starts a program once for each of several files. An
// error box tells when there are no songs.
void PlayFiles(Player& player, const std::vector<std::string>& paths);

// Queues the songs of the command line, before the first item starts.
void QueueFilesOfRun(Player& player);

}  // namespace hullrider
