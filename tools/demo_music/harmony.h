// Chords, progressions and scales, and how chords are laid on keys. Pure.
#pragma once

#include <string_view>
#include <vector>

#include "demo_music/phrase.h"

namespace hullrider::demo {

struct Chord {
    int root = 0;                // 0 is C, 11 is B
    int bass = 0;                // the same, of the lowest note: the root unless written "G/B"
    std::vector<int> intervals;  // semitones above the root, the root itself first
};

// A chord for a time, in beats from the beginning of the progression.
struct ChordSpan {
    double start = 0;
    double beats = 0;
    Chord chord;
};

using Progression = std::vector<ChordSpan>;

// Reads "Dm9 | G13 C | %": bars of equally long chords, '%' for one more bar of the last chord. Throws
// std::invalid_argument for a chord it does not know.
Progression ReadChords(std::string_view text, double beatsPerBar = 4);

double BeatsOf(const Progression& progression);

// One voicing a chord: `voices` keys, rising, moving as little as possible from chord to chord and staying near
// `middleKey`. A rich chord leaves out its root, then its fifth, which the bass and the overtones supply.
using Voicings = std::vector<std::vector<int>>;
Voicings LeadVoices(const Progression& progression, int voices, int middleKey);

// A scale by its pitch classes, 0 being C.
struct Scale {
    std::vector<int> pitchClasses;
};
Scale Major(int tonic);
Scale Minor(int tonic);
Scale MajorPentatonic(int tonic);

// `steps` scale steps up or down; a key outside the scale counts as the scale's key below it.
int StepInScale(const Scale& scale, int key, int steps);
// A second voice a fixed number of scale steps away.
Phrase Harmonised(Phrase melody, const Scale& scale, int steps);
// The melody again with passing figures: long notes become the note, its neighbor and the note again.
Phrase Embellished(const Phrase& melody, const Scale& scale, double noteBeats);

}  // namespace hullrider::demo
