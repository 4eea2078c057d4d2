// What the user may ask for beside the next song. UI thread.
#pragma once

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// Play that song of the library, or the current internet station, now. As PlayNext.
bool PlaySong(AppState& app, PickerState& picker, int32_t playlist, int32_t song);
bool PlayStation(AppState& app, PickerState& picker);

// Back to the song before, along the history; play-next then goes forward along it until its end. False when there is
// none.
bool PlayPreviousSong(AppState& app, PickerState& picker);

// Move through playlists, custom stations and internet stations, and start the next item from there.
void NextPlaylist(AppState& app, PickerState& picker);
void PreviousPlaylist(AppState& app, PickerState& picker);

// Toggles pause of what plays, and of what is fading out.
void TogglePause(AppState& app);

}  // namespace hullrider
