#include "demo_music/accompaniment.h"
#include "demo_music/feel.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/recorded_pieces.h"

namespace hullrider::demo {
namespace {

constexpr double kBar = 3;
constexpr int kD = 2;

constexpr auto kChordsA = "D | Bm7 | Gmaj7 | A | D | F#m7 | Gmaj7 | A7sus4";
constexpr auto kChordsB = "Bm | F#m | G | D | Em7 | Bm | G | A";
constexpr auto kChordsEnd = "Gmaj7 | A7sus4 | D | Gmaj7 | D | D";

constexpr auto kMelodyA =
    "o5 f+4 a4 >d4< | >c+4.< b8 f+4 | b4 a4 d4 | e2. | f+4 a4 >f+4< | >e4. d8 c+4< | b4 >d4< g4 | a2.";
constexpr auto kMelodyB =
    "o5 v8 >d4. c+8< b4 | >c+4.< a8 f+4 | b4. a8 g4 | a2. | g4 b4 >e4< | >d4 c+4< b4 | b4 a4 g4 | v6 a4 >c+4 e4<";
constexpr auto kMelodyEnd = "o5 v6 b4 >d4< g4 | a2. | f+4 a4 >d4< | v5 b4 a4 g4 | f+4 a4 >d4 | f+2.";

FmPatch GlassBell() {
    return {{{1, 3.5, 1.6, 1.2, 4, 1}, {2, 1, 0.4, 1, 2.5, 0.35}, {5.4, 1, 0, 1, 0.5, 0.12}}, 0, 0, 2.5};
}

FmPatch MusicBox() {
    return {{{1, 7, 0.9, 0.12, 1.8, 1}, {4, 1, 0, 1, 0.35, 0.2}}, 0, 0, 1.2};
}

SubtractivePatch GlassPad() {
    return {.oscillators = 6,
            .detuneCents = 22,
            .width = 1,
            .loudness = {1.4, 1, 0.9, 2.4},
            .brightness = {2.2, 2, 0.6, 2},
            .cutoffHz = 500,
            .brightnessOctaves = 1.4,
            .resonance = 0.15};
}

SubtractivePatch Cello() {
    return {.oscillators = 3,
            .detuneCents = 9,
            .width = 0.4,
            .loudness = {0.16, 1, 0.85, 0.4},
            .brightness = {0.25, 1, 0.6, 0.4},
            .cutoffHz = 700,
            .brightnessOctaves = 1,
            .vibratoCents = 10};
}

// A drop now and then, never twice in the same place.
Phrase Drops(const Progression& chords, Random& random) {
    const Voicings voicings = LeadVoices(chords, 3, 86);
    Phrase drops = Rest(BeatsOf(chords));
    for (size_t span = 0; span < chords.size(); ++span) {
        for (const double beat : {0.5, 1.5, 2.0, 2.5}) {
            if (random.Unit() > 0.45) continue;
            const int key = voicings[span][static_cast<size_t>(random.Below(3))];
            drops.notes.push_back({chords[span].start + beat, 1, key, 0.3 + 0.3 * random.Unit()});
        }
    }
    return drops;
}

}  // namespace

Recording ComposeGlassGarden() {
    Random random(12);
    const Progression a = ReadChords(kChordsA, kBar), b = ReadChords(kChordsB, kBar),
                      end = ReadChords(kChordsEnd, kBar);
    const Phrase tuneA = ReadMelody(kMelodyA, kBar), tuneB = ReadMelody(kMelodyB, kBar),
                 tuneEnd = ReadMelody(kMelodyEnd, kBar);
    const Scale scale = Major(kD);
    const auto waltz = [](const Progression& chords) {
        return Arpeggio(chords, LeadVoices(chords, 3, 66), "123321", 0.5);
    };
    const auto padOf = [](const Progression& chords) { return Comp(chords, LeadVoices(chords, 4, 60), "x--", 1); };
    const auto bassOf = [](const Progression& chords) { return Bass(chords, "R--", 1, 38); };
    const Phrase twin = Harmonised(tuneA, scale, -2);

    // Intro (4 bars), A, A', B, A with the cello, B', A', end: 58 bars.
    const Phrase box = Swelling(Slice(waltz(a), 0, 12), 0.5, 0.8) + waltz(a) * 2 + Louder(waltz(b), 0.8) + waltz(a) +
                       waltz(b) + waltz(a) + Swelling(waltz(end), 0.9, 0.4);
    const Phrase bell = Rest(12) + tuneA + Embellished(tuneA, scale, 0.25) + tuneB + Louder(twin, 0.7) + tuneB +
                        (tuneA & Louder(twin, 0.6)) + tuneEnd;
    const Phrase cello = Rest(84) + Transposed(tuneA, -12) +
                         Louder(Transposed(Harmonised(tuneB, scale, -2), -12), 0.8) +
                         Louder(Transposed(tuneA, -12), 0.8);
    const Phrase pad = Louder(Slice(padOf(a), 0, 12), 0.8) + Louder(padOf(a), 0.8) * 2 + padOf(b) + padOf(a) +
                       padOf(b) + padOf(a) + Swelling(padOf(end), 1, 0.6);
    const Phrase bass =
        Rest(36) + bassOf(a) + bassOf(b) + bassOf(a) + bassOf(b) + bassOf(a) + Swelling(bassOf(end), 1, 0.6);
    const Phrase drops = Rest(12) + Drops(a, random) + Drops(a, random) + Drops(b, random) + Drops(a, random) +
                         Drops(b, random) + Drops(a, random) + Drops(end, random);

    const auto play = [&](const Phrase& phrase, double time) {
        return Humanised(Pulsed(phrase, kBar, 0.15), random, time, 0.15);
    };
    Recording recording{"Glass Garden", "mp3", 12, 92, 3.2, 1.5, 0.4, {}};
    recording.tracks = {
        {play(bell, 0.02), FrequencyModulated(GlassBell()), -4, 0.1, 0.4, 0.25},
        {play(box, 0.02), FrequencyModulated(MusicBox()), -9, -0.3, 0.35, 0.1},
        {play(cello, 0.03), Subtractive(Cello()), -8, -0.1, 0.4, 0},
        {play(pad, 0), Subtractive(GlassPad()), -9, 0, 0.45, 0},
        {play(bass, 0), Subtractive({.wave = Wave::kSine, .oscillators = 1, .loudness = {0.08, 2, 0.7, 0.6}}), -13, 0,
         0.1, 0},
        {play(drops, 0.03), FrequencyModulated(MusicBox()), -17, 0.5, 0.6, 0.5},
    };
    return recording;
}

}  // namespace hullrider::demo
