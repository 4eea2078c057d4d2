// The one operation that moves the music on, and the question when it is time for it. UI thread.
#pragma once

#include "playback/draws.h"
#include "state/app_state.h"

namespace hullrider {

// Fades the old item out, loads the next one, starts it silent inside its play window and fades it in; a worker frees
// the old one. What comes next is `request`, the history when it is played again, or a selection. A song that cannot be
// played is named on the error stream and another one is picked. A play-next within a running fade cuts the old streams
// off. With nothing to play `trouble` says why, and what plays already goes on. True when a new item was started.
bool PlayNext(AppState& app, Draws& draws);

// What the user is told when nothing can be heard; empty for no trouble.
const char* TroubleText(PlaybackTrouble trouble);

// True when the current item has reached the end of its window, has ended or broke off; or when nothing plays and
// there may be something to play by now.
bool IsSongOver(const PlaybackState& playback);

}  // namespace hullrider
