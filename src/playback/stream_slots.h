// The two pairs of stream slots. One member of each pair is current, the other one idle: the next item is loaded into
// the idle one, and then they swap. UI thread.
#pragma once

#include "state/app_state.h"

namespace hullrider {

// The handle of what plays; 0 when nothing does.
StreamSlot CurrentHandle(const PlaybackState& playback);

// Load the chosen song into the idle slot, silent and not yet started; whatever the slot held is freed. Return the
// handle, or 0 with a line that says why. A MIDI song is given the font of its slot.
StreamSlot LoadMusicStream(AppState& app, const SongChoice& choice);
StreamSlot LoadTrackerStream(PlaybackState& playback, const MusicLibrary& library, const SongChoice& choice);

// Stops and frees every slot and every font, and shuts the audio library down.
void FreeAllStreams(PlaybackState& playback, SoundFontState& fonts);

// Stops every slot at once. What was in them stays, until the slot is loaded again or CutStreamsBut is called.
void StopAllStreams(const PlaybackState& playback);

// Stops and frees every slot at once but the one that holds `keep`.
void CutStreamsBut(PlaybackState& playback, StreamSlot keep);

}  // namespace hullrider
