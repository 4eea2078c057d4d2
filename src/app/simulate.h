// --simulate: what the user's library and settings would play.
#pragma once

#include <string>

#include "app/options.h"

namespace hullrider {

// Loads what the player would load, plays `options.simulate` songs in thought only and tells what came how often, as
// lines of text. Opens no sound device and saves nothing.
std::string SimulationText(const RunOptions& options);

}  // namespace hullrider
