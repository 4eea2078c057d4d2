// Plays a progression from step strings such as "x--x..x-": one character a step, repeated from its beginning until the
// progression ends. '-' holds the note before, '.' and ' ' are silence... see each function for the rest. Pure.
#pragma once

#include <initializer_list>
#include <string_view>

#include "demo_music/harmony.h"

namespace hullrider::demo {

// Whole chords: 'x' strikes, 'X' strikes harder, 'o' softly.
Phrase Comp(const Progression& progression, const Voicings& voicings, std::string_view steps, double stepBeats);

// Single notes of each voicing: '1' its lowest, '2' the next...; beyond its size they go on an octave higher.
Phrase Arpeggio(const Progression& progression, const Voicings& voicings, std::string_view steps, double stepBeats);

// 'R' the chord's bass note, 'r' the same softly, '3', '5', '7' its third, fifth and seventh above, '8' its octave,
// 'n' the bass note of the chord after, 'a' a half step below that. Bass notes lie in the octave from `lowestKey`.
Phrase Bass(const Progression& progression, std::string_view steps, double stepBeats, int lowestKey);

// One drum of a kit, by its General MIDI key: 'X' accented, 'x' normal, 'o' soft.
struct DrumLine {
    int key;
    std::string_view steps;
};

// Drum lines together for `beats`.
Phrase Drums(std::initializer_list<DrumLine> lines, double stepBeats, double beats);

// General MIDI percussion keys, as far as the pieces use them.
enum Drum {
    kKick = 36,
    kRim = 37,
    kSnare = 38,
    kHat = 42,
    kTom = 45,
    kOpenHat = 46,
    kCrash = 49,
    kRide = 51,
    kShaker = 70
};

}  // namespace hullrider::demo
