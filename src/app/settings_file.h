// The settings file, "MusicSettings.json": a JSON object with one key for each field of Settings. UI thread, at
// start-up and shutdown.
#pragma once

#include <string>
#include <string_view>

#include "platform/state_files.h"
#include "state/settings.h"

namespace hullrider {

// Reads the file into `settings`, which are the built-in ones for whatever is not taken from it. The keys are read in
// their order; a required key that is missing or of another JSON type ends the reading, so that the keys before it come
// from the file and the rest are built in. Values outside their range are put into it. A failure is one line on the
// error stream, and a file that is there but not understood wholly is kept as "PATH.bad".
StateReading LoadSettings(const std::string& path, Settings& settings);

// Writes all keys, replacing the file. False, with a line on the error stream, when that failed; the old file stays.
bool SaveSettings(const std::string& path, const Settings& settings);

// The same on the file's text. Pure.
StateReading ReadSettings(std::string_view text, Settings& settings, std::string& error);
std::string SettingsText(const Settings& settings);

}  // namespace hullrider
