// A piece for a General MIDI synthesiser, and its file: Standard MIDI File, format 1 (MIDI Manufacturers Association,
// Standard MIDI Files 1.0, RP-001). Pure.
#pragma once

#include <string>
#include <vector>

#include "demo_music/phrase.h"

namespace hullrider::demo {

// General MIDI programs, counted from 0, as far as the pieces use them.
enum Program {
    kGrandPiano = 0,
    kVibraphone = 11,
    kNylonGuitar = 24,
    kAcousticBass = 32,
    kSynthBass = 38,
    kStrings = 48,
    kFlute = 73,
    kSquareLead = 80,
    kSawLead = 81,
    kWarmPad = 89,
    kPolySynth = 90,
    kDrumKit = 128,  // not a program: the percussion channel
};

struct MidiTrack {
    std::string name;
    Program program = kGrandPiano;
    int volume = 100;  // controller 7, 0..127
    int pan = 64;      // controller 10, 64 is the middle
    int reverb = 40;   // controller 91
    int chorus = 0;    // controller 93
    Phrase phrase;
    std::vector<double> pedalChanges;  // beats at which the sustain pedal is lifted and pressed again
};

struct TempoMark {
    double beat = 0;
    double beatsPerMinute = 120;
};

struct MidiSong {
    std::string title;
    int beatsPerBar = 4;
    std::vector<TempoMark> tempo;
    std::vector<MidiTrack> tracks;  // at most 15, and one of kDrumKit
};

// The bytes of the file.
std::string WriteMidiFile(const MidiSong& song);

}  // namespace hullrider::demo
