// The files of the internet stations: where they are and when they are loaded and saved. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// The stations of the data directory, or else those of the working directory, and the recent stations.
void LoadStationFiles(AppState& app);

void SaveStationsFile(const AppState& app);
void SaveRecentStationsFile(const AppState& app);

}  // namespace hullrider
