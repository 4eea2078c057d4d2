// What moves the music on. UI thread.
#pragma once

#include <chrono>

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// The next item is wanted now: what was prepared, if it is still what would be picked, or else what `request` asks for,
// the history when it is played again, or a selection. It starts at once when it is ready, and otherwise as soon as
// PollPlayback finds it open; until then the old item plays on. An item that cannot be played is named on the error
// stream and another one is picked. With nothing to play `trouble` says why, and what plays already goes on. True when
// a new item was started.
bool PlayNext(AppState& app, PickerState& picker);
bool PlayNext(AppState& app, PickerState& picker, const NextRequest& request);

// Does what is due: starts the item that is wanted and open by now, moves on at the end of an item's window or when it
// has fallen silent, and prepares the next one in time. Due every 250 ms, at UntilDue, and after RunPosted. True when a
// new item was started.
bool PollPlayback(AppState& app, PickerState& picker);

// When PollPlayback is due because the item's window ends; at most a quarter of a second.
std::chrono::milliseconds UntilDue(const PlaybackState& playback);

// What the user is told when nothing can be heard; empty for no trouble.
const char* TroubleText(PlaybackTrouble trouble);

// Notes why nothing can be heard and says so, once and not with every attempt.
void TellTrouble(PlaybackState& playback, PlaybackTrouble trouble);

// True when the current item has reached the end of its window, has ended or broke off; or when nothing plays and
// there may be something to play by now.
bool IsSongOver(const PlaybackState& playback);

}  // namespace hullrider
