// Keeps account of what is heard: the history's times, the play counts and the statistics. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// What was just started becomes what is heard.
void BeginListening(AppState& app);

// Adds the time since it began, or went on, to the account. Due before anything else is started, before a pause and
// before the end of the program; without effect when nothing is heard.
void EndListening(AppState& app);

// Counts on after a pause, or when nothing else could be started after all.
void ContinueListening(PlaybackState& playback);

// The statistics with what is being heard now, up to this moment. Changes nothing.
Statistics StatisticsSoFar(const AppState& app);

}  // namespace hullrider
