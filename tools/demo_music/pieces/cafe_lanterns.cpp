#include "demo_music/accompaniment.h"
#include "demo_music/feel.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/recorded_pieces.h"

namespace hullrider::demo {
namespace {

constexpr int kF = 5;

constexpr auto kChordsA = "Gm9 | C13 | Fmaj9 | Dm7 | Gm9 | C13 | Am7 | D7b9";
constexpr auto kChordsB = "Ebmaj7 | F6 | Dm7 | Gm9 | Ebmaj7 | F6 | Am7b5 | D7b9";
constexpr auto kChordsEnd = "Gm9 | C13 | Gm9 | Gm9";

constexpr auto kMelodyA =
    "o5 r4 d8 f8 a4 g8 f8 | ^4 e4 r4 c8 d8 | e4. g8^4 a4 | f4. d8^4 r4 |"
    "r4 d8 f8 b-4 a8 g8 | a4 g8 e8^4 r4 | g4 e8 c8^4 e4 | f+4 e-4 d2";
constexpr auto kMelodyB =
    "o5 g4. b-8^4 a8 g8 | a4. >c8<^4 a4 | f4. a8^4 g8 f8 | d2^4 r4 |"
    "v8 g4. b-8^4 >d8 c8< | >c4.< a8^4 f4 | e-4 g8 a8^4 >c4< | v7 >c4< a4 f+2";

FmPatch ElectricPiano() {
    return {{{1, 1, 1.7, 1.1, 3.2, 1}, {1, 14, 0.9, 0.12, 1.2, 0.3}}, 4.6, 0.28, 0.25};
}

SubtractivePatch MutedLead() {
    return {.wave = Wave::kPulse,
            .oscillators = 2,
            .detuneCents = 7,
            .width = 0.4,
            .loudness = {0.03, 0.7, 0.6, 0.25},
            .brightness = {0.04, 0.6, 0.3, 0.2},
            .cutoffHz = 650,
            .brightnessOctaves = 1.6,
            .resonance = 0.15,
            .vibratoCents = 10};
}

SubtractivePatch DeepBass() {
    return {.wave = Wave::kTriangle,
            .oscillators = 1,
            .subLevel = 0.15,
            .loudness = {0.01, 0.9, 0.55, 0.1},
            .brightness = {0.003, 0.3, 0.2, 0.1},
            .cutoffHz = 700,
            .brightnessOctaves = 1.8};
}

SubtractivePatch Haze() {
    return {.oscillators = 5,
            .detuneCents = 20,
            .width = 1,
            .loudness = {1.0, 1, 0.9, 1.8},
            .brightness = {1.2, 1, 0.5, 1},
            .cutoffHz = 380,
            .brightnessOctaves = 1};
}

Phrase Beat(double beats) {
    return Drums({{kKick, "X.....x...x....."},
                  {kSnare, "....x.......x..o"},
                  {kHat, "x.xox.xox.xox.xx"},
                  {kShaker, "..o...o...o...o."}},
                 0.25, beats);
}

Phrase Ending(double beats) {
    return Drums({{kKick, "x"}, {kRide, "o"}}, beats, beats);
}

}  // namespace

Recording ComposeCafeLanterns() {
    Random random(13);
    const Progression a = ReadChords(kChordsA), b = ReadChords(kChordsB), end = ReadChords(kChordsEnd);
    const Phrase tuneA = ReadMelody(kMelodyA), tuneB = ReadMelody(kMelodyB);
    const Scale scale = Major(kF);
    const auto keysOf = [](const Progression& chords) {
        return Comp(chords, LeadVoices(chords, 4, 62), "x----.o-..x---o.", 0.25);
    };
    const auto padOf = [](const Progression& chords) { return Comp(chords, LeadVoices(chords, 3, 67), "x---", 1); };
    const auto bassOf = [](const Progression& chords) { return Bass(chords, "R----.r-5---..a.", 0.25, 31); };
    const Phrase bassEnd = bassOf(end);

    // Intro (4 bars), A, A', B, A'', end: the lead, then the piano answers itself an octave up.
    const Phrase keys = Swelling(Slice(keysOf(a), 0, 16), 0.8, 1) + keysOf(a) * 2 + keysOf(b) + keysOf(a) +
                        Swelling(keysOf(end), 1, 0.6);
    const Phrase lead = Rest(16) + tuneA + Embellished(tuneA, scale, 0.25) + Rest(32) + tuneA;
    const Phrase answer = Rest(16 + 64) + Transposed(tuneB, 0) + Louder(Harmonised(tuneA, scale, 2), 0.6);
    const Phrase bass = Rest(16) + bassOf(a) * 2 + bassOf(b) + bassOf(a) + Swelling(bassEnd, 1, 0.6);
    const Phrase pad =
        Rest(16) + Louder(padOf(a), 0.6) * 2 + padOf(b) + Louder(padOf(a), 0.8) + Swelling(padOf(end), 1, 0.5);
    const Phrase drums = Rest(8) + Louder(Beat(8), 0.7) + Beat(4 * 32) + Louder(Beat(12), 0.8) + Ending(4);

    const auto play = [&](const Phrase& phrase, double time) {
        return Humanised(Pulsed(Swung(phrase, 0.25, 0.6), 4, 0.1), random, time, 0.16);
    };
    Recording recording{"Caf\xC3\xA9 Lanterns", "m4a", 13, 84, 1.6, 0.75, 0.38, {}};
    recording.tracks = {
        {play(Strummed(keys, 0.012), 0.02), FrequencyModulated(ElectricPiano()), -4, 0, 0.18, 0.04},
        {play(lead, 0.03), Subtractive(MutedLead()), -6, 0.1, 0.3, 0.25},
        {play(answer, 0.02), FrequencyModulated(ElectricPiano()), -6, -0.2, 0.3, 0.2},
        {play(bass, 0.01), Subtractive(DeepBass()), -7, 0, 0.02, 0},
        {play(pad, 0), Subtractive(Haze()), -13, 0, 0.4, 0},
        {play(drums, 0.012), SoftDrums(), -8, 0, 0.1, 0},
    };
    return recording;
}

}  // namespace hullrider::demo
