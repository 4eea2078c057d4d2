// Plays demo music: MIDI through the player's own sound, modules through the library that the player has for them.
#pragma once

#include <string>

#include "demo_music/synth/stereo.h"

namespace hullrider::demo {

// A MIDI file through Debian's TimGM6mb SoundFont, last notes included. Empty, with a failed expectation, when either
// is refused.
Stereo HearMidi(const std::string& bytes);

// A module through libopenmpt, once through. Empty, with a failed expectation, when it is refused or warned about.
Stereo HearModule(const std::string& bytes, const std::string& title);

// The longest time, in seconds, that the sound stays below `level` within its first minute.
double LongestSilence(const Stereo& sound, double level);

double PeakOf(const Stereo& sound);

}  // namespace hullrider::demo
