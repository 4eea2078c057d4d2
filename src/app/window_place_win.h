// Remembers the main window's place from run to run. UI thread.
#pragma once

#include <windows.h>

#include "state/shell_state.h"

namespace hullrider {

// Moves the window to its saved place, if that is still on a screen. Returns the show command: the system's, or
// maximized as before.
int RestorePlace(HWND window, const ShellOptions& options, int showCommand);

// Saves the window's place in `options`, unless it is minimized, hidden or borderless.
void NoteWindowPlace(HWND window, ShellOptions& options);

}  // namespace hullrider
