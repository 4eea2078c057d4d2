// Loads and saves what was heard, during start-up and shutdown: statistics, play counts and history. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// Also counts this start of the program.
void LoadStatisticsFile(AppState& app);
void SaveStatisticsFile(const AppState& app);

// Also matches the counts with the library.
void LoadPlayCountsFile(AppState& app);
void SavePlayCountsFile(const AppState& app);

void LoadSongHistoryFile(AppState& app);
void SaveSongHistoryFile(const AppState& app);

}  // namespace hullrider
