// The ring that next and previous playlist go round: every playlist of the library, then every custom station, then
// every internet station, then the first playlist again. Without custom stations the mix of the whole library takes
// their place; without internet stations theirs is left out. Pure.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// Moves the selection one place on or back. What comes next is for the caller to play.
void StepPlaylistForward(AppState& app);
void StepPlaylistBack(AppState& app);

// Moves the selection to that playlist of the library. False when it has none such.
bool EnterPlaylist(AppState& app, int32_t index);

}  // namespace hullrider
