// "RecentStations.json": the stations of the last searches, an array with an object for each: "name", "url", "country",
// "state", "clickCount", "votes" and "tags". Click counts are not read back: other programs that share the file expect
// them under another name than it is read by. UI thread.
#pragma once

#include <string>
#include <vector>

#include "platform/state_files.h"
#include "state/radio_state.h"

namespace hullrider {

inline constexpr size_t kMostRecentStations = 500;

// Replaces the list with the file's. What cannot be read is one line on the error stream, and leaves the list alone.
StateReading LoadRecentStations(const std::string& path, std::vector<DirectoryStation>& stations);

// Writes the last kMostRecentStations of the list. False, with a line on the error stream, when that failed.
bool SaveRecentStations(const std::string& path, const std::vector<DirectoryStation>& stations);

}  // namespace hullrider
