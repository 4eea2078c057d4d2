// Registers hotkeys with the system for a window, which then receives a WM_HOTKEY with the action. UI thread.
#pragma once

#include <windows.h>

#include <vector>

#include "input/hotkeys.h"

namespace hullrider {

// Registers all that it can and returns the rest.
std::vector<RefusedHotkey> RegisterHotkeys(HWND window, const HotkeyBindings& bindings);

// Unregisters the first fifteen bindings. The system unregisters the others with the window.
void UnregisterHotkeys(HWND window);

// Unregisters all of them while the program goes on, so that each key reaches the focused window, or so that other
// bindings can be registered: a second key for an action would be added to the first one.
void UnregisterAllHotkeys(HWND window);

// The action of a media key or button (the parameter of WM_APPCOMMAND); -1 for none.
int32_t ActionOfAppCommand(LPARAM parameter);

}  // namespace hullrider
