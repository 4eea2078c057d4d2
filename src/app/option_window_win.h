// Windows of one subject each, opened from the menu. UI thread.
#pragma once

#include <windows.h>

#include "app/player.h"

namespace hullrider {

// Opens the window, or brings it forward when it is open already. Its class is registered the first time. It says in
// one line what it is for as long as there is nothing to set in it.
void OpenOptionWindow(HINSTANCE instance, const OptionWindow& window);

}  // namespace hullrider
