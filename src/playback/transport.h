// The user's commands besides play-next. UI thread.
#pragma once

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// Plays that song of the library, or the current internet station, now. As PlayNext.
bool PlaySong(AppState& app, PickerState& picker, int32_t playlist, int32_t song);
bool PlayStation(AppState& app, PickerState& picker);

// Goes back to the previous song of the history; play-next then replays the history forward to its end. False when
// there is none.
bool PlayPreviousSong(AppState& app, PickerState& picker);

// Steps through playlists, custom stations and internet stations, and starts the next item from there.
void NextPlaylist(AppState& app, PickerState& picker);
void PreviousPlaylist(AppState& app, PickerState& picker);

// Pauses or resumes the current item and the one that is fading out.
void TogglePause(AppState& app);

}  // namespace hullrider
