// SoundFonts for MIDI songs: the files found, the current one, and one loaded font for each music slot. UI thread.
#pragma once

#include <string>
#include <vector>

#include "playback/random.h"
#include "state/app_state.h"

namespace hullrider {

// The paths of the ".sf2" files directly inside `folder`, sorted by name; empty when the folder cannot be read.
std::vector<std::string> FindSoundFonts(const std::string& folder);

// Makes the font of that index current for both music slots, the playing ones included. A bad index or a file that is
// no SoundFont shows an error box, returns false and leaves the old font in use. While the audio library is shut down
// the font is only chosen, and loaded with the next call.
bool SelectSoundFont(SoundFontState& fonts, const PlaybackState& playback, int32_t index);

// Step through the fonts and round again. Without fonts an error box says so.
void NextSoundFont(AppState& app);
void PreviousSoundFont(AppState& app);

// When the MIDI song that is about to be opened completes the number after which the font changes: the index of another
// font, drawn for its slot; else -1. Changes nothing.
int32_t DrawSoundFont(const AppState& app, Random& random);

// That song has started: counts it, or begins to count anew when a font was drawn for it. `font` is that font of `file`, loaded
// and attached, which becomes the idle slot's; 0 when it could not be used, and the old one stays.
void ApplySoundFontRule(AppState& app, int32_t drawn, const std::string& file, uint32_t font);

}  // namespace hullrider
