#include "demo_music/accompaniment.h"
#include "demo_music/feel.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/midi_pieces.h"

namespace hullrider::demo {
namespace {

constexpr double kBar = 6;  // twelve eighths, in quarters
constexpr int kEFlat = 3;

constexpr auto kChordsA = "Eb | Cm7 | Fm7 | Bb7 | Eb/G | C7b9 | Fm7 Bb7 | Eb";
constexpr auto kChordsB = "Cm | G7/B | Cm7/Bb | Abmaj7 | Fm7 | Dm7b5 G7 | Ab Fm7b5 | Bb7sus4 Bb7";
constexpr auto kChordsEnd = "Eb Abmaj7 | Eb/G Fm7b5 | Eb | Eb";

constexpr auto kMelodyA =
    "o5 g2. f4 g8 b-4. | e-2. d4 e-8 g4. | a-2. g4 f8 c4. | d2.^4. r4. |"
    "g2. f4 g8 >c4.< | b-2. a-4 g8 e4. | a-4. g4 f8 d4. f4. | e-2.^4. r4.";
constexpr auto kMelodyB =
    "o5 v8 g4 g8 g4 a-8 g4. e-4. | f4 f8 f4 g8 f4. d4. | e-4 e-8 e-4 f8 g4. >c4.< | >c2.< b-4 a-8 g4. |"
    "v9 a-4 a-8 a-4 b-8 >c4.< a-4. | >d2.< b4 a-8 g4. | v8 >e-2. d4 c8< b4. | v7 b-2.^4 a-8 f4.";
constexpr auto kMelodyEnd = "o5 v6 g2. a-4. g4. | b-2. a-4. f4. | v5 g2. e-4. b-4. | >e-1.";

// Broken chords that rise and fall under the melody; the pedal binds them.
Phrase LeftHand(const Progression& chords) {
    const Voicings voicings = LeadVoices(chords, 3, 55);
    return Bass(chords, "R-----......", 0.5, 36) & Louder(Arpeggio(chords, voicings, ".123432.1232", 0.5), 0.72);
}

void AddPedal(std::vector<double>& pedalChanges, const Progression& chords, double from) {
    for (const ChordSpan& span : chords) pedalChanges.push_back(from + span.start);
}

}  // namespace

MidiSong ComposeQuietHarbour() {
    Random random(1);
    const Progression a = ReadChords(kChordsA, kBar), b = ReadChords(kChordsB, kBar),
                      end = ReadChords(kChordsEnd, kBar);
    const Phrase melodyA = ReadMelody(kMelodyA, kBar), melodyB = ReadMelody(kMelodyB, kBar);
    const Phrase returning = Embellished(melodyA, Major(kEFlat), 0.5);

    const Phrase intro = Slice(LeftHand(a), 0, 2 * kBar);
    Phrase right = Rest(intro.beats) + melodyA + (melodyB & Louder(Transposed(melodyB, -12), 0.6)) +
                   (returning & Louder(Harmonised(melodyA, Major(kEFlat), -2), 0.7)) + ReadMelody(kMelodyEnd, kBar);
    Phrase left = Louder(intro, 0.85) + LeftHand(a) + Swelling(LeftHand(b), 0.95, 1.15) + LeftHand(a) +
                  Swelling(LeftHand(end), 0.9, 0.55);

    std::vector<double> pedal;
    double at = 0;
    for (const Progression& part : {Progression(a.begin(), a.begin() + 2), a, b, a, end}) {
        AddPedal(pedal, part, at);
        at += BeatsOf(part);
    }

    MidiSong song{"Quiet Harbour", static_cast<int>(kBar), {{0, 88}}, {}};
    // The pulse breathes: a little slower into each new part, and much slower at the very end.
    for (const double partEnd : {10 * kBar, 18 * kBar, 26 * kBar}) {
        song.tempo.push_back({partEnd - 3, 76});
        song.tempo.push_back({partEnd, partEnd == 10 * kBar ? 92.0 : 86.0});
    }
    song.tempo.push_back({28 * kBar, 74});
    song.tempo.push_back({29 * kBar, 60});

    const auto play = [&](const Phrase& phrase, double time) {
        return Humanised(Pulsed(phrase, kBar, 0.08), random, time, 0.12);
    };
    song.tracks = {{"Right hand", kGrandPiano, 127, 68, 70, 0, play(Louder(right, 1.4), 0.04), pedal},
                   {"Left hand", kGrandPiano, 127, 58, 70, 0, play(Louder(left, 1.15), 0.03), pedal}};
    return song;
}

}  // namespace hullrider::demo
