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
// no SoundFont shows an error box, returns false and leaves the old font in use.
bool SelectSoundFont(SoundFontState& fonts, const PlaybackState& playback, int32_t index);

// Step through the fonts and round again. Without fonts an error box says so.
void NextSoundFont(AppState& app);
void PreviousSoundFont(AppState& app);

// When so many MIDI songs were played as are set, draws another font for the slot that a song was just loaded into,
// which is the idle one. A font that cannot be used is named on the error stream, and the old one stays.
void ApplySoundFontRule(AppState& app, Random& random);

}  // namespace hullrider
