// Keeps one idle synthesizer with its fonts, because opening a large font is the slowest step before a MIDI song is
// heard. Any thread.
#pragma once

#include <memory>

#include "audio/fonts.h"
#include "audio/synth.h"

namespace hullrider {

// A synthesizer with these fonts. Null when memory is short or none of them can be loaded.
std::unique_ptr<Synth> TakeSynth(uint32_t rate, const FontList& fonts);

// Keeps it for the next user, replacing the one kept so far.
void GiveBackSynth(std::unique_ptr<Synth> synth);

// Frees it and its memory.
void DropIdleSynth();

}  // namespace hullrider
