// Registers hotkeys with the system, for a window that is sent a WM_HOTKEY with the action. UI thread.
#pragma once

#include <windows.h>

#include <vector>

#include "input/hotkeys.h"

namespace hullrider {

// Registers all that it can and returns the others.
std::vector<RefusedHotkey> RegisterHotkeys(HWND window, const HotkeyBindings& bindings);

// Lets the first fifteen bindings go. The others go with the window.
void UnregisterHotkeys(HWND window);

// Lets every one go while the program goes on, so that each key reaches the window that has the focus, or so that other
// bindings can be registered: a second key of an action would be added to its first one.
void UnregisterAllHotkeys(HWND window);

// The action that a media key or button sends to the window that has the focus (the parameter of WM_APPCOMMAND), or -1.
int32_t ActionOfAppCommand(LPARAM parameter);

}  // namespace hullrider
