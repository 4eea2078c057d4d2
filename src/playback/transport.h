// What the user may ask for beside the next song. UI thread.
#pragma once

#include "playback/draws.h"
#include "state/app_state.h"

namespace hullrider {

// Play that song of the library, or the current internet station, now. As PlayNext.
bool PlaySong(AppState& app, Draws& draws, int32_t playlist, int32_t song);
bool PlayStation(AppState& app, Draws& draws);

// Back to the song before, along the history; play-next then goes forward along it until its end. False when there is
// none.
bool PlayPreviousSong(AppState& app, Draws& draws);

// Move through playlists, custom stations and internet stations, and start the next item from there.
void NextPlaylist(AppState& app, Draws& draws);
void PreviousPlaylist(AppState& app, Draws& draws);

// Toggles pause of what plays, and of what is fading out.
void TogglePause(AppState& app);

}  // namespace hullrider
