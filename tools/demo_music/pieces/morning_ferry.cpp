#include "demo_music/accompaniment.h"
#include "demo_music/feel.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/recorded_pieces.h"

namespace hullrider::demo {
namespace {

constexpr int kG = 7;

constexpr auto kChordsA = "G | Cadd9 | Em7 | D | G/B | C | Am7 | D7sus4 D";
constexpr auto kChordsB = "Em7 | Cmaj7 | G | D/F# | Em7 | Cmaj7 | Am7 | D";
constexpr auto kChordsEnd = "C | D | G | Cadd9 | G | G";

constexpr auto kMelodyA =
    "o5 b4. a8 g4 d4 | e4. g8^2 | b4. a8 g4 b4 | a2^4 r4 |"
    "b4. >c8 d4< b4 | >c4.< b8 g4 e4 | a4 g8 e8^4 c4 | d2^4 r4";
constexpr auto kMelodyB =
    "o5 v7 g4 b8 >e8^4 d4< | >c4< b8 g8^2 | d4 g8 b8^4 a4 | a8 g8 f+4^4 r4 |"
    "v8 g4 b8 >e8^4 g4< | >e4 d8< b8^2 | >c4< b8 a8^4 e4 | v7 f+4 a4 >d2<";
constexpr auto kMelodyEnd = "o5 v6 e4 g8 >c8^4< b4 | a4 f+8 d8^2 | b4. a8 g4 d4 | e4. g8^2 | v5 d4 g4 b2 | >g1";

// Two hands on a guitar: the thumb on the low strings, three fingers above it.
Phrase Picking(const Progression& chords) {
    const Voicings voicings = LeadVoices(chords, 4, 62);
    return Louder(Bass(chords, "R---5---", 0.5, 43), 0.95) & Louder(Arpeggio(chords, voicings, ".3.2413.", 0.5), 0.8) &
           Louder(Arpeggio(chords, voicings, "4...4...", 0.5), 0.6);
}

Phrase Beat(double beats) {
    return Drums({{kKick, "x.....o.x......."},
                  {kRim, "....x.......x..."},
                  {kShaker, "xooxxooxxooxxoox"},
                  {kHat, "..............o."}},
                 0.25, beats);
}

SubtractivePatch Whistle() {
    return {.wave = Wave::kTriangle,
            .oscillators = 2,
            .detuneCents = 6,
            .width = 0.3,
            .loudness = {0.06, 0.6, 0.75, 0.25},
            .brightness = {0.08, 0.8, 0.4, 0.3},
            .cutoffHz = 900,
            .brightnessOctaves = 1.5,
            .vibratoCents = 9};
}

SubtractivePatch WarmPad() {
    return {.oscillators = 5,
            .detuneCents = 18,
            .width = 0.9,
            .loudness = {0.9, 1, 0.85, 1.6},
            .brightness = {1.5, 2, 0.5, 1.5},
            .cutoffHz = 420,
            .brightnessOctaves = 1.2,
            .resonance = 0.1};
}

SubtractivePatch RoundBass() {
    return {.wave = Wave::kTriangle,
            .oscillators = 1,
            .subLevel = 0.1,
            .loudness = {0.012, 1.2, 0.5, 0.12},
            .brightness = {0.005, 0.4, 0.2, 0.1},
            .cutoffHz = 900,
            .brightnessOctaves = 1.5};
}

}  // namespace

Recording ComposeMorningFerry() {
    Random random(11);
    const Progression a = ReadChords(kChordsA), b = ReadChords(kChordsB), end = ReadChords(kChordsEnd);
    const Phrase tuneA = ReadMelody(kMelodyA), tuneB = ReadMelody(kMelodyB), tuneEnd = ReadMelody(kMelodyEnd);
    const Scale scale = Major(kG);
    const auto bassOf = [](const Progression& chords) { return Bass(chords, "R--.R-5-", 0.5, 31); };
    const auto padOf = [](const Progression& chords) {
        return Comp(chords, LeadVoices(chords, 4, 64), "x-------", 0.5);
    };

    // Intro on the guitar alone, A on a second string, A with the whistle, B, A in two voices, end.
    const Phrase intro = Slice(Picking(a), 0, 16);
    const Phrase guitar =
        Swelling(intro, 0.7, 1) + Picking(a) * 2 + Picking(b) + Picking(a) + Swelling(Picking(end), 1, 0.6);
    const Phrase solo = Rest(16) + tuneA + Rest(64) + Harmonised(Embellished(tuneA, scale, 0.25), scale, -2) + tuneEnd;
    const Phrase whistle = Rest(48) + Embellished(tuneA, scale, 0.25) + tuneB + tuneA;
    const Phrase bells = Rest(80) + Louder(Transposed(Arpeggio(b, LeadVoices(b, 3, 74), "..3...2.", 0.5), 12), 0.7);
    const Phrase bass =
        Rest(32) + Slice(bassOf(a), 16, 32) + bassOf(a) + bassOf(b) + bassOf(a) + Swelling(bassOf(end), 1, 0.7);
    const Phrase pad =
        Rest(48) + Louder(padOf(a), 0.7) + padOf(b) + Louder(padOf(a), 0.8) + Swelling(padOf(end), 0.9, 0.6);
    const Phrase drums = Rest(32) + Louder(Beat(16), 0.7) + Beat(96) + Swelling(Beat(16), 0.9, 0.4);

    const auto play = [&](const Phrase& phrase, double time) {
        return Humanised(Pulsed(phrase, 4, 0.1), random, time, 0.18);
    };
    Recording recording{"Morning Ferry", "flac", 11, 100, 1.8, 0.75, 0.35, {}};
    recording.tracks = {
        {play(guitar, 0.02), PluckedString({4.5, 0.5, 0.35, 0.18}), -4, -0.15, 0.16, 0},
        {play(solo, 0.03), PluckedString({5, 0.75, 0.25, 0.12}), -6, 0.3, 0.3, 0.15},
        {play(whistle, 0.03), Subtractive(Whistle()), -5, 0.05, 0.35, 0.2},
        {play(bells, 0.01), FrequencyModulated({{{1, 3.5, 1.2, 0.6, 2.5, 1}}, 0, 0, 1.5}), -15, 0.5, 0.5, 0.3},
        {play(bass, 0.01), Subtractive(RoundBass()), -8, 0, 0.03, 0},
        {play(pad, 0), Subtractive(WarmPad()), -12, 0, 0.4, 0},
        {play(Swung(drums, 0.25, 0.56), 0.01), SoftDrums(), -10, 0, 0.12, 0},
    };
    return recording;
}

}  // namespace hullrider::demo
