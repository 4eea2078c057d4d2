// The album "Paper Lanterns", for a General MIDI synthesiser.
#pragma once

#include "demo_music/midi_file.h"

namespace hullrider::demo {

MidiSong ComposeQuietHarbour();   // a slow piano nocturne in E flat
MidiSong ComposeCornerTable();    // a bossa in D minor: flute, vibraphone, guitar, bass, light drums
MidiSong ComposeNeonBoulevard();  // synth-pop in A minor

}  // namespace hullrider::demo
