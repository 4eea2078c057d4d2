// --simulate: what the user's library and settings would play.
#pragma once

#include <string>

#include "app/options.h"

namespace hullrider {

// Loads what the player would load, simulates playing `options.simulate` songs, and returns lines of text on how often
// each type came. Opens no sound device and saves nothing.
std::string SimulationText(const RunOptions& options);

}  // namespace hullrider
