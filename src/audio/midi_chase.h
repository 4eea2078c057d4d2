// Brings a synthesizer into the state that it would be in had the song been played up to a place, without its notes.
#pragma once

#include <cstddef>

namespace hullrider {

struct MidiSong;
class Synth;

// Sends `synth`, freshly reset, what stands of the first `count` events of the song: programs with their banks,
// controllers, bends, pressures, and system exclusive messages.
void ChaseMidi(const MidiSong& song, size_t count, Synth& synth);

// Strikes the notes, drums apart, that were struck among the first `count` events and not released.
void StrikeHeldNotes(const MidiSong& song, size_t count, Synth& synth);

}  // namespace hullrider
