// The settings file, "MusicSettings.json": a JSON object with one key for each field of Settings. UI thread, at
// start-up and shutdown.
#pragma once

#include <string>
#include <string_view>

#include "platform/state_files.h"
#include "state/settings.h"

namespace hullrider {

// Reads the file into `settings`; a setting not read from it gets its built-in value. Keys are read in order. A
// required key that is missing or has the wrong JSON type ends the reading: the keys before it come from the file, the
// rest are built in. Values are clamped to their range. A failure prints one line on the error stream, and a file that
// was not understood completely is kept as "PATH.bad".
StateReading LoadSettings(const std::string& path, Settings& settings);

// Replaces the file with all keys. On failure returns false, prints a line on the error stream and leaves the old file.
bool SaveSettings(const std::string& path, const Settings& settings);

// The same on the file's text. Pure.
StateReading ReadSettings(std::string_view text, Settings& settings, std::string& error);
std::string SettingsText(const Settings& settings);

}  // namespace hullrider
