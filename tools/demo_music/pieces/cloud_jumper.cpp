#include "demo_music/accompaniment.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/module_pieces.h"

namespace hullrider::demo {
namespace {

constexpr int kC = 0;

constexpr auto kChordsA = "C | G/B | Am | F | C | G | F | G | C | G/B | Am | F | C | G | F G | C";
constexpr auto kChordsB = "Am | Em | F | C | Dm | Am | E7 | E7 | Am | Em | F | C | Dm | F | G | G";
constexpr auto kChordsEnd = "F | G | C | C";

constexpr auto kOpening =
    "o5 l8 g e g >c4< g e4 | d g b >d4< b g4 | e a >c e4 c< a4 | f a >c4.< a g f | e g >c4< b >c d4< | b4 a g d g b4 |";
constexpr auto kHalfClose = "o5 l8 a4 g f c f a4 | g4. a b2 |";
constexpr auto kFullClose = "o5 l8 a4 g f d4 g b | >c2^4 r4";
constexpr auto kMelodyB =
    "o5 l8 a4. >c< b a4 e | g4. a b4 e4 | f4. g a4 >c4< | g2 r e g >c< | >d4. c< a4 f4 | >c4.< b a4 e4 |"
    "g+4 b >d4< b g+ e | e2. r4 | a >c e4 c< a4. | g b >e4< b g4. | f a >c4< a f4. | e g >c4< g e4. |"
    "d f a4 >d4 c< a | >c4< a f a4 >c4< | b2 >d4< b4 | >d2. r4";
constexpr auto kMelodyEnd = "o5 l8 a4 g f d4 g b | >d4. c<b4 g4 | >c<g e g >c4 e4 | c1";

enum SampleNumber { kLead = 1, kThin, kRoundPulse, kTriangle, kKickSample, kSnareSample, kHatSample };
enum Channel { kLeadChannel, kEchoChannel, kHarmonyChannel, kChordChannel, kBassChannel, kBeatChannel, kHatChannel };

std::vector<Sample> Samples() {
    // The stepped triangle of an early console: sixteen levels up, sixteen down.
    std::vector<double> triangle;
    for (int i = 0; i < 32; ++i) triangle.push_back(i < 16 ? i : 31 - i);
    std::vector<Sample> samples{
        ChipPulse("lead: pulse 1/4", 0.25, 72),
        ChipPulse("echo: pulse 1/8", 0.125, 72),
        ChipPulse("chords: pulse 1/2", 0.5, 60),
        ChipWave("bass: triangle", triangle, 48),
        Sampled("kick", SoftDrums(), {kKick}, 1, 0.3, kKick, 22050),
        Sampled("snare", SoftDrums(), {kSnare}, 1, 0.3, kSnare, 22050),
        Sampled("hat", SoftDrums(), {kHat}, 1, 0.1, kHat, 32000),
    };
    for (const auto& [number, volume] : {std::pair{kLead, 0.42},
                                         {kThin, 0.25},
                                         {kRoundPulse, 0.22},
                                         {kTriangle, 0.8},
                                         {kKickSample, 1.0},
                                         {kSnareSample, 0.9},
                                         {kHatSample, 0.4}}) {
        samples[static_cast<size_t>(number) - 1].volume = volume;
    }
    return samples;
}

Phrase Beat(double beats) {
    return Drums({{kKick, "X...x.x.X...x..."}, {kSnare, "....X.......X..o"}, {kHat, "x.o.x.o.x.o.x.oo"}}, 0.25, beats);
}

Phrase WithFill(const Phrase& beat) {
    return Slice(beat, 0, beat.beats - 1) + Drums({{kSnare, "xoxX"}, {kKick, "x.x."}}, 0.25, 1);
}

}  // namespace

TrackerPiece ComposeCloudJumper() {
    const Progression a = ReadChords(kChordsA), b = ReadChords(kChordsB), end = ReadChords(kChordsEnd);
    const Phrase opening = ReadMelody(kOpening);
    const Phrase tuneA = opening + ReadMelody(kHalfClose) + opening + ReadMelody(kFullClose);
    const Phrase tuneB = ReadMelody(kMelodyB), tuneEnd = ReadMelody(kMelodyEnd);
    const auto bassOf = [](const Progression& chords) {
        return Detached(Bass(chords, "R-8-R-8-R-8-R-5-", 0.25, 36), 0.8);
    };
    const auto chordsOf = [](const Progression& chords) {
        return Comp(chords, LeadVoices(chords, 3, 64), "x-x.x-x.", 0.5);
    };
    const auto runsOf = [](const Progression& chords) {
        return Arpeggio(chords, LeadVoices(chords, 3, 67), "12345432", 0.25);
    };

    // Intro, A, B, then A a whole tone higher, end up there.
    const int higher = 2;
    const Phrase lead = Rest(16) + tuneA + tuneB + Transposed(tuneA + tuneEnd, higher);
    const Phrase echo = Delayed(lead, 0.75);
    const Phrase harmony = Slice(runsOf(a), 0, 16) + Rest(64) + Harmonised(tuneB, Major(kC), -2) +
                           Transposed(Harmonised(tuneA, Major(kC), -2) + Slice(runsOf(end), 0, 16), higher);
    const Phrase chords = Rest(16) + chordsOf(a) + chordsOf(b) + Transposed(chordsOf(a) + chordsOf(end), higher);
    const Phrase bass = Rest(8) + Slice(bassOf(a), 0, 8) + bassOf(a) + bassOf(b) +
                        Transposed(bassOf(a) + Slice(bassOf(end), 0, 12) + ReadMelody("o2 c1"), higher);
    const Phrase lull = WithFill(Drums({{kKick, "x..............."}, {kHat, "x...o...x...o.o."}}, 0.25, 16));
    const Phrase beat = Rest(8) + WithFill(Beat(8)) + WithFill(Beat(64)) + lull + WithFill(Beat(48)) +
                        WithFill(Beat(64)) + Beat(12) + Drums({{kKick, "X"}, {kHat, "x"}}, 4, 4);

    const auto singing = [](const Phrase& phrase) { return Detached(phrase, 0.9); };
    return {"Cloud Jumper",
            142,
            {6, 6},
            {0.0, 0.45, -0.4, 0.3, 0, 0, -0.3},
            Samples(),
            {{singing(lead), kLead, kLeadChannel, false, 0x63},
             {Louder(singing(echo), 0.6), kThin, kEchoChannel},
             {Louder(singing(harmony), 0.8), kThin, kHarmonyChannel, false, 0x62},
             {chords, kRoundPulse, kChordChannel, true},
             {bass, kTriangle, kBassChannel},
             {Only(beat, kKick), kKickSample, kBeatChannel},
             {Only(beat, kSnare), kSnareSample, kBeatChannel},
             {Only(beat, kHat), kHatSample, kHatChannel}}};
}

}  // namespace hullrider::demo
