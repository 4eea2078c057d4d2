// The files that keep account of what was heard: statistics, play counts and history, each at its place in start-up and
// shutdown. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// Also count this start of the program.
void LoadStatisticsFile(AppState& app);
void SaveStatisticsFile(const AppState& app);

// Bring the counts and the library into step.
void LoadPlayCountsFile(AppState& app);
void SavePlayCountsFile(const AppState& app);

void LoadSongHistoryFile(AppState& app);
void SaveSongHistoryFile(const AppState& app);

}  // namespace hullrider
