// The cross-fade from the old item to the new one: both take the same time. UI thread.
#pragma once

#include <cstdint>

#include "playback/play_window.h"
#include "state/app_state.h"

namespace hullrider {

// The item to replace, as it was before anything changed.
struct OldItem {
    StreamSlot handle = 0;
    bool isCutOff = false;  // another fade is in progress: everything old ends at once
    double leftSec = -1.0;  // until its end; below 0: unknown, or not playing
};

OldItem LookAtOldItem(const PlaybackState& playback);

// How long the fade takes: as set, but at most half of the new item's window, so that it reaches its full volume, and
// no longer than the old item lasts.
int32_t FadeMsFor(int32_t setMs, const PlayWindow& window, const OldItem& old);

// Starts fading out the old item.
void LetOldItemGo(PlaybackState& playback, const OldItem& old, int32_t fadeMs);

// Has it freed when it is silent. With loudness following, also starts the volume correction of the new item.
void FreeOldItem(PlaybackState& playback, const OldItem& old, StreamSlot newHandle, int32_t fadeMs);

// Pauses and resumes both items of a fade.
void PauseAll(PlaybackState& playback);
void ResumeAll(AppState& app);

}  // namespace hullrider
