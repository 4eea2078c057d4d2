// The two pairs of stream slots. One member of each pair is current and the other idle: the next item goes into the
// idle one, and then they swap. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// The handle of the current item; 0 when there is none.
StreamSlot CurrentHandle(const PlaybackState& playback);

// Puts the stream of an item of that type into the idle slot, freeing the slot's old content.
void PutIntoIdleSlot(PlaybackState& playback, int32_t type, StreamSlot handle);

// The font of the idle music slot, 0: none. Replacing it frees the old one.
uint32_t IdleSlotFont(const PlaybackState& playback, const SoundFontState& fonts);
void ReplaceIdleSlotFont(const PlaybackState& playback, SoundFontState& fonts, uint32_t font, const std::string& file);

// The file of the current music slot's font; empty for none.
const std::string& CurrentSlotFont(const PlaybackState& playback, const SoundFontState& fonts);

// Stops and frees every slot and every font, and shuts the audio library down.
void FreeAllStreams(PlaybackState& playback, SoundFontState& fonts);

// Stops every slot at once. The streams stay until the slot is reused or CutStreamsBut is called.
void StopAllStreams(const PlaybackState& playback);

// Stops and frees every slot at once, except the one that holds `keep`.
void CutStreamsBut(PlaybackState& playback, StreamSlot keep);

}  // namespace hullrider
