// The files that keep account of what was heard: statistics, play counts and history, each at its place in start-up and
// shutdown. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// Also count this start of the program.
void LoadStatisticsFile(AppState& state);
void SaveStatisticsFile(const AppState& state);

// Bring the counts and the library into step.
void LoadPlayCountsFile(AppState& state);
void SavePlayCountsFile(const AppState& state);

void LoadSongHistoryFile(AppState& state);
void SaveSongHistoryFile(const AppState& state);

}  // namespace hullrider
