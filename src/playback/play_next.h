// The one operation that moves the music on, and the question when it is time for it. UI thread.
#pragma once

#include <functional>

#include "playback/random.h"
#include "state/app_state.h"

namespace hullrider {

// Picks the next song, starts it silent inside its play window and cross-fades to it: the old one slides to silence and
// is freed by a worker. A song that cannot be played is named on the error stream and another one is picked. A
// play-next within a running fade cuts the old streams off. With nothing to play `trouble` says why, and what plays
// already goes on. True when a new song was started.
bool PlayNext(AppState& app, Random& random);

// What the user is told when nothing can be heard; empty for no trouble.
const char* TroubleText(PlaybackTrouble trouble);

// True when the current song has reached the end of its window, has ended or broke off; or when nothing plays and
// there may be something to play by now.
bool IsSongOver(const PlaybackState& playback);

// Toggles pause of what plays.
void TogglePause(PlaybackState& playback);

}  // namespace hullrider
