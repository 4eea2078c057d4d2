// Tells the companion game whether the player is running, by a file of one word in the game's folder.
#pragma once

#include <string>
#include <string_view>

namespace hullrider {

// Writes `text` into "MusicRunning.txt" of the command folder, or of the working directory when `commandFolder` is
// empty. Prints the path and the outcome.
void WriteRunningMarker(const std::string& commandFolder, std::string_view text);

}  // namespace hullrider
