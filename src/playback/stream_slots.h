// The two pairs of stream slots. One member of each pair is current, the other one idle: the next item is put into the
// idle one, and then they swap. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// The handle of what plays; 0 when nothing does.
StreamSlot CurrentHandle(const PlaybackState& playback);

// Gives the stream of an item of that type to the idle slot; whatever the slot held is freed.
void PutIntoIdleSlot(PlaybackState& playback, int32_t type, StreamSlot handle);

// The font of the idle music slot, 0: none; and its replacement, which frees it.
uint32_t IdleSlotFont(const PlaybackState& playback, const SoundFontState& fonts);
void ReplaceIdleSlotFont(const PlaybackState& playback, SoundFontState& fonts, uint32_t font, const std::string& file);

// The file of the font that the current music slot plays through; empty for none.
const std::string& CurrentSlotFont(const PlaybackState& playback, const SoundFontState& fonts);

// Stops and frees every slot and every font, and shuts the audio library down.
void FreeAllStreams(PlaybackState& playback, SoundFontState& fonts);

// Stops every slot at once. What was in them stays, until the slot is loaded again or CutStreamsBut is called.
void StopAllStreams(const PlaybackState& playback);

// Stops and frees every slot at once but the one that holds `keep`.
void CutStreamsBut(PlaybackState& playback, StreamSlot keep);

}  // namespace hullrider
