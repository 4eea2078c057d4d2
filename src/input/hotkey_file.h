// "hotkeyConfig.json": a JSON list with an object for each binding, in the table's order, with the keys "vkKey"
// (number), "ctrl", "alt", "shift" (booleans), "gameControllerButton" and "gameControllerTrigger" (numbers). UI thread.
#pragma once

#include <string>
#include <string_view>

#include "input/hotkeys.h"

namespace hullrider {

// Replaces the bindings by the file's, as many as it has. False, with a line on the error stream, when the file cannot
// be opened. Throws a std::exception for a bad file: when it is not a JSON list, the bindings stay as they were; at a
// bad element, the ones before it are kept.
bool LoadHotkeyConfig(const std::string& path, HotkeyBindings& bindings);

// Writes all bindings, replacing the file. False, with a line on the error stream, when that failed.
bool SaveHotkeyConfig(const std::string& path, const HotkeyBindings& bindings);

// Loads the player's own file, or that of the working directory when there is none. A bad file is one line on the error
// stream and is kept as "PATH.bad", because a save replaces it: the bindings read before the error stand, and the
// built-in ones fill the rest.
void LoadHotkeyFiles(const std::string& ownPath, HotkeyBindings& bindings);

// The same on the file's text. Pure.
void ReadHotkeyConfig(std::string_view text, HotkeyBindings& bindings);
std::string HotkeyConfigText(const HotkeyBindings& bindings);

}  // namespace hullrider
