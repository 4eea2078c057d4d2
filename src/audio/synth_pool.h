// A synthesizer that is not in use at the moment, kept with its fonts: opening a large font takes longer than anything
// else before a MIDI song is heard. Any thread.
#pragma once

#include <memory>

#include "audio/fonts.h"
#include "audio/synth.h"

namespace hullrider {

// A synthesizer that sounds through these fonts. Null when there is not enough memory or none of them can be loaded.
std::unique_ptr<Synth> TakeSynth(uint32_t rate, const FontList& fonts);

// Keeps it for the next taker, in the place of the one kept until now.
void GiveBackSynth(std::unique_ptr<Synth> synth);

// Lets it go, and its memory.
void DropIdleSynth();

}  // namespace hullrider
