// Records what is heard: the history's times, the play counts and the statistics. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// The item just started is heard from now on.
void BeginListening(AppState& app);

// Counts the item as played once it was heard for five seconds, or for half of its play window. Due with the poll.
void CountPlayOnceHeard(AppState& app);

// Records the time since the last Begin or Continue. Due before another item starts, before a pause and before the
// program ends; does nothing when nothing is heard.
void EndListening(AppState& app);

// After a pause, or when no other item could be started after all.
void ContinueListening(PlaybackState& playback);

// The statistics including the current item up to this moment. Changes nothing.
Statistics StatisticsSoFar(const AppState& app);

}  // namespace hullrider
