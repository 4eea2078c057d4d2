// The ring that Next and Previous Playlist step through: every playlist of the library, then every custom station, then
// every internet station, then the first playlist again. Without custom stations, the mix of the whole library takes
// their place; without internet stations they are left out. Pure.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// Moves the selection one place forward or back. The caller starts the next item.
void StepPlaylistForward(AppState& app);
void StepPlaylistBack(AppState& app);

// Moves the selection to that playlist of the library, not the queue. False when there is none.
bool EnterPlaylist(AppState& app, int32_t index);

}  // namespace hullrider
