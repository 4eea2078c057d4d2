// Drives playback from item to item. UI thread.
#pragma once

#include <chrono>

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// Moves on to the next item: the prepared one, if it is still what would be picked; otherwise the item that `request`
// asks for, the history when it is replayed, or a selection. It starts at once when it is open, otherwise as soon as
// PollPlayback finds it open; the old item plays on until then. An item that cannot be played is named on the error
// stream and another one is picked. With nothing to play, `trouble` says why, and the old item plays on. True when a
// new item was started.
bool PlayNext(AppState& app, PickerState& picker);
bool PlayNext(AppState& app, PickerState& picker, const NextRequest& request);

// Does what is due: starts a wanted item that is open by now, moves on when an item's window ends or it has fallen
// silent, and prepares the next item in time. Due every 250 ms, after UntilDue, and after RunPosted. True when a new
// item was started.
bool PollPlayback(AppState& app, PickerState& picker);

// The time until PollPlayback is next due, which may be the end of the item's window; at most 250 ms.
std::chrono::milliseconds UntilDue(const PlaybackState& playback);

// The user's text for it; empty for no trouble.
const char* TroubleText(PlaybackTrouble trouble);

// Records why nothing plays and prints it once, not with every attempt.
void TellTrouble(PlaybackState& playback, PlaybackTrouble trouble);

// True when the current item is over: its window or the file has ended, or playback broke off. Also true when nothing
// plays and another attempt is due.
bool IsSongOver(const PlaybackState& playback);

}  // namespace hullrider
