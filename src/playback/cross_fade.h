// From the old item to the new one: both take the same time. UI thread.
#pragma once

#include <cstdint>

#include "playback/play_window.h"
#include "state/app_state.h"

namespace hullrider {

// The item that gives way. It is looked at before anything is changed.
struct OldItem {
    StreamSlot handle = 0;
    bool isCutOff = false;  // another fade is still under way: everything old ends at once
    double leftSec = -1.0;  // until it ends by itself; below 0: unknown, or it stands still
};

OldItem LookAtOldItem(const PlaybackState& playback);

// How long the fade takes: as set, but at most half of the new item's window, so that it reaches its full volume, and
// no longer than the old item lasts.
int32_t FadeMsFor(int32_t setMs, const PlayWindow& window, const OldItem& old);

// Begins the old item's way to silence.
void LetOldItemGo(PlaybackState& playback, const OldItem& old, int32_t fadeMs);

// Has it freed when it is silent; with loudness following on, also starts the correction of the new one.
void FreeOldItem(PlaybackState& playback, const OldItem& old, StreamSlot newHandle, int32_t fadeMs);

// Both items of a fade stand still and go on together.
void PauseAll(PlaybackState& playback);
void ResumeAll(AppState& app);

}  // namespace hullrider
