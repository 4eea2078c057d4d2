// "InternetStations.json": a JSON array with an object for each station: "name", "url", "country", "state", "tags" (a
// list), "favorite", "favoriteCount", "clickCount", "votes", "isValid", "isIncluded" and, after a repair, "oldUrl". An
// entry with neither "country" nor "tags" is of an older form, which had name, URL and favorite data only. UI thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/state_files.h"
#include "state/radio_state.h"

namespace hullrider {

// Replaces the list with the file's. What cannot be read is one line on the error stream; the list changes only when
// the file is an array, of which unusable elements are left out. A file that was not wholly understood is kept as
// "PATH.bad".
StateReading LoadInternetStations(const std::string& path, std::vector<InternetStation>& stations);

// Writes the whole list. False, with a line on the error stream, when that failed; the old file stays.
bool SaveInternetStations(const std::string& path, const std::vector<InternetStation>& stations);

// The same on the file's text. Pure.
StateReading ReadInternetStations(std::string_view text, std::vector<InternetStation>& stations, std::string& error);
std::string InternetStationsText(const std::vector<InternetStation>& stations);

}  // namespace hullrider
