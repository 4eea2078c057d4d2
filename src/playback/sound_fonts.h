// SoundFonts for MIDI songs: the files found, the current one, and one loaded font for each music slot. UI thread.
#pragma once

#include <string>
#include <vector>

#include "playback/random.h"
#include "state/app_state.h"

namespace hullrider {

// The paths of the ".sf2" files directly inside `folder`, sorted by name; empty when the folder cannot be read.
std::vector<std::string> FindSoundFonts(const std::string& folder);

// Makes the font of that index current for both music slots, including playing ones. A bad index or file shows an error
// box, returns false and keeps the old font. While the audio library is shut down, the font is only chosen, and loaded
// by the next call.
bool SelectSoundFont(SoundFontState& fonts, const PlaybackState& playback, int32_t index);

// Step through the fonts, wrapping around. Without fonts, an error box says so.
void NextSoundFont(AppState& app);
void PreviousSoundFont(AppState& app);

// When the MIDI song about to be opened completes the number of songs before a font change: the index of a random font
// for its slot; otherwise -1. Changes nothing.
int32_t DrawSoundFont(const AppState& app, Random& random);

// That song has started: counts it, or restarts the count when a font was drawn for it. `font` is the loaded and
// attached font of `file`, which becomes the idle slot's; 0 when it could not be used, and the old one stays.
void ApplySoundFontRule(AppState& app, int32_t drawn, const std::string& file, uint32_t font);

}  // namespace hullrider
