// The stuff that every piece is made of: notes in time, and what a composer does with a group of them. Pure.
//
// Time is in beats (a quarter note), pitch in MIDI keys (60 is middle C, c4 in the notation), velocity in 0..1.
#pragma once

#include <vector>

namespace hullrider::demo {

struct Note {
    double start = 0;
    double beats = 0;
    int key = 0;
    double velocity = 0.7;
};

// Notes and the time that they take up; a note may ring on beyond it.
struct Phrase {
    std::vector<Note> notes;
    double beats = 0;
};

Phrase Rest(double beats);
Phrase operator+(Phrase first, const Phrase& then);
Phrase operator*(const Phrase& phrase, int times);
// Both at once, as long as the longer one.
Phrase operator&(Phrase upper, const Phrase& lower);

Phrase Transposed(Phrase phrase, int semitones);
Phrase Louder(Phrase phrase, double factor);
// Velocities grow (or shrink) evenly from `from` to `to` times what they are.
Phrase Swelling(Phrase phrase, double from, double to);
// Shifted later without growing, for an echo played by another voice.
Phrase Delayed(Phrase phrase, double beats);
// Notes sound for `factor` of their written length.
Phrase Detached(Phrase phrase, double factor);
// What sounds from `from` until `to`, moved to begin at 0.
Phrase Slice(const Phrase& phrase, double from, double to);
// Only the notes of one key: one instrument of a drum kit.
Phrase Only(const Phrase& phrase, int key);

}  // namespace hullrider::demo
