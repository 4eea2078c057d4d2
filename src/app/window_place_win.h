// Where the main window stands, from run to run. UI thread.
#pragma once

#include <windows.h>

#include "state/shell_state.h"

namespace hullrider {

// Puts the window where it was, if that is still on a screen, and says how it is to be shown: as the system asks, or
// maximized as before.
int RestorePlace(HWND window, const ShellOptions& options, int showCommand);

// Notes where the window stands. A window that is minimized, hidden or without its frame changes nothing.
void NoteWindowPlace(HWND window, ShellOptions& options);

}  // namespace hullrider
