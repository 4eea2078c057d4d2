// What a player does that the page does not say. Pure; the same random numbers give the same performance.
#pragma once

#include "demo_music/phrase.h"
#include "demo_music/random.h"

namespace hullrider::demo {

// Every second `unitBeats` comes late: 0.5 is straight, 0.667 a triplet swing.
Phrase Swung(Phrase phrase, double unitBeats, double ratio);

// The first beat of a bar is heaviest, the off-beats lightest, by at most `depth` of the velocity.
Phrase Pulsed(Phrase phrase, double beatsPerBar, double depth);

// Small faults of time (at most `beats`, mostly much less) and of touch (at most `velocity`).
Phrase Humanised(Phrase phrase, Random& random, double beats, double velocity);

// Notes that begin together begin one after another, low to high, `beats` apart: a strummed chord.
Phrase Strummed(Phrase phrase, double beats);

}  // namespace hullrider::demo
