// Puts a synthesizer into the state that playing the song up to a place would leave, without the notes.
#pragma once

#include <cstddef>

namespace hullrider {

struct MidiSong;
class Synth;

// Sends `synth`, freshly reset, the lasting effects of the song's first `count` events: programs with their banks,
// controllers, bends, pressures, and system exclusive messages.
void ChaseMidi(const MidiSong& song, size_t count, Synth& synth);

// Starts the notes, except drums, that the first `count` events started and did not release.
void StrikeHeldNotes(const MidiSong& song, size_t count, Synth& synth);

}  // namespace hullrider
