// Plays demo music through the libraries that the player plays it with.
#pragma once

#include <string>

#include "demo_music/synth/stereo.h"

namespace hullrider::demo {

// A MIDI file through FluidSynth and Debian's TimGM6mb SoundFont, with 2 s for the last notes. Empty when either
// refuses.
Stereo HearMidi(const std::string& bytes);

// A module through libopenmpt, once through. Empty, with a failed expectation, when it is refused or warned about.
Stereo HearModule(const std::string& bytes, const std::string& title);

// The longest time, in seconds, that the sound stays below `level` within its first minute.
double LongestSilence(const Stereo& sound, double level);

double PeakOf(const Stereo& sound);

}  // namespace hullrider::demo
