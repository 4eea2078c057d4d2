// What the user changes about how music is chosen, while it plays. UI thread.
#pragma once

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// From random order to one song after the other, and back.
void ToggleShuffle(SelectionState& selection);

// All songs, favorites only, all but favorites, and round again; of the whole library.
void CycleFavoritesFilter(SelectionState& selection);

// Leaves playlist, station and custom station for the mix of the whole library.
void ReturnToLibrary(SelectionState& selection);

// Plays the internet station `step` places after the last one that played, round and round, and stays with stations.
// False when there are none.
bool StepStation(AppState& app, PickerState& picker, int32_t step);

}  // namespace hullrider
