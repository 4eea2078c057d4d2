// The user's commands that change how music is chosen. UI thread.
#pragma once

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// Toggles between random order and songs in order, which go on after the song that plays; in another playlist than its
// own they go on where they were.
void ToggleShuffle(AppState& app);

// Cycles through all songs, only favorites, and all but favorites, of the whole library.
void CycleFavoritesFilter(SelectionState& selection);

// Leaves the queue, a playlist, station or custom station for the mix of the whole library.
void ReturnToLibrary(SelectionState& selection);

// Plays the internet station `step` places after the last one played, wrapping around, and stays with stations. False
// when there are none.
bool StepStation(AppState& app, PickerState& picker, int32_t step);

}  // namespace hullrider
