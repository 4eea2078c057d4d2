// The option windows: which command opens which, and what each works on. UI thread.
#pragma once

#include <cstdint>

#include "app/player.h"

namespace hullrider {

// Opens the command's window, or brings it forward when it is open.
void OpenOptionWindow(Player& player, int32_t command);

}  // namespace hullrider
