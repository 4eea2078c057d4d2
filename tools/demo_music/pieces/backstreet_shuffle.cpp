#include "demo_music/accompaniment.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/module_pieces.h"

namespace hullrider::demo {
namespace {

constexpr auto kChordsA = "Dm9 | G13 | Dm9 | G13 | Dm9 | G13 | Bbmaj7 C | Dm9";
constexpr auto kChordsB = "Bbmaj7 | C | Am7 | Dm7 | Bbmaj7 | C | Gm7 | Am7";
constexpr auto kChordsBreak = "Dm9 | Dm9 | G13 | G13";

constexpr auto kMelodyA =
    "o5 r8 a8 >c8< a8^16 g8 f16 d8 f8 | g8. f16 e4 r4 d8 e8 | f8 a8 >c8 d8^16 c8< a16 g8 a8 | b4 a8 g8^4 r4 |"
    "r8 a8 >c8< a8^16 g8 f16 d8 f8 | g8. f16 e4 r4 d8 e8 | f8 d8 f8 a8 g8 e8 g8 >c8< | a2 r2";
constexpr auto kMelodyB =
    "o5 d8. f16 a8 f8^4 r4 | e8. g16 >c8< g8^4 r4 | e8. g16 a8 >c8^8< b8 a8 g8 | a2^8 f8 g8 a8 |"
    ">d8. c16< a8 f8^4 a8 >c8< | >e8. d16 c8< g8^4 r4 | b-8 a8 g8 f8 d8 f8 g8 b-8 | a2^4 r4";
constexpr auto kMelodyBreak = "o5 r2 r8 d8 f8 g8 | a4 r4 r2 | r2 r8 e8 g8 a8 | b4 a8 g8 f8 e8 d8 c8";

enum SampleNumber { kKickSample = 1, kSnareSample, kHatSample, kBassSample, kMinorStab, kMajorStab, kLeadSample };
enum Channel { kBeatChannel, kBassChannel, kStabChannel, kLeadChannel };

constexpr double kLowRate = 8287.14, kHighRate = 16574.28;  // as C-2 and C-3 play them

// An organ whose chords are samples, since there is one channel to play them.
Sample Stab(std::string name, const std::vector<int>& keys) {
    const FmPatch organ{{{1, 1, 0.5, 2, 3, 1}, {2, 1, 0.3, 2, 2, 0.5}, {3, 1, 0.2, 0.5, 0.5, 0.25}}, 0, 0, 0.12};
    return Sampled(std::move(name), FrequencyModulated(organ), keys, 0.5, 0.7, 62, kHighRate);
}

std::vector<Sample> Samples() {
    const std::vector<double> pluck{1, 0.8, 0.6, 0.45, 0.3, 0.25, 0.2, 0.15, 0.1, 0.1, 0.08, 0.06};
    const std::vector<double> round{0.8, 0.3, 0.12, 0.05, 0.02, 0.01, 0, 0, 0, 0, 0, 0};
    const std::vector<double> reed{0.7, 0.7, 0.5, 0.5, 0.3, 0.25, 0.2}, flute{0.8, 0.35, 0.22, 0.1, 0.06, 0.03, 0.02};
    std::vector<Sample> samples{
        Sampled("kick", SoftDrums(), {kKick}, 1, 0.4, kKick, kLowRate),
        Sampled("snare", SoftDrums(), {kSnare}, 1, 0.35, kSnare, kHighRate),
        Sampled("hat", SoftDrums(), {kHat}, 1, 0.1, kHat, kHighRate),
        Additive("bass", pluck, round, 0.35, 45, kLowRate),
        Stab("minor seventh", {62, 65, 69, 72}),
        Stab("major seventh", {62, 66, 69, 73}),
        Additive("reed", reed, flute, 0.25, 72, kLowRate),
    };
    for (const auto& [number, volume] : {std::pair{kKickSample, 1.0},
                                         {kSnareSample, 0.8},
                                         {kHatSample, 0.45},
                                         {kBassSample, 0.9},
                                         {kMinorStab, 0.6},
                                         {kMajorStab, 0.6},
                                         {kLeadSample, 0.6}}) {
        samples[static_cast<size_t>(number) - 1].volume = volume;
    }
    return samples;
}

// The strikes of those chords that are minor, or of those that are not, by their roots.
Phrase Stabs(const Progression& chords, bool minor) {
    const Phrase all = Bass(chords, "R..R--..R.R.....", 0.25, 55);
    Phrase stabs = Rest(all.beats);
    for (const ChordSpan& span : chords) {
        if ((span.chord.intervals[1] == 3) != minor) continue;
        for (const Note& note : all.notes) {
            if (note.start >= span.start && note.start < span.start + span.beats) stabs.notes.push_back(note);
        }
    }
    return stabs;
}

Phrase Beat(double beats) {
    return Drums({{kHat, "x.ooX.oox.ooX.oo"}, {kKick, "x.....x...x....."}, {kSnare, "....x..o.o..x..o"}}, 0.25, beats);
}

Phrase WithFill(const Phrase& beat) {
    return Slice(beat, 0, beat.beats - 1) + Drums({{kSnare, "x.xx"}}, 0.25, 1);
}

}  // namespace

TrackerPiece ComposeBackstreetShuffle() {
    const Progression a = ReadChords(kChordsA), b = ReadChords(kChordsB), pause = ReadChords(kChordsBreak);
    const Phrase tuneA = ReadMelody(kMelodyA), tuneB = ReadMelody(kMelodyB), tunePause = ReadMelody(kMelodyBreak);
    const auto bassA = Bass(a, "R..R..8.R.7.5.a.", 0.25, 38), bassB = Bass(b, "R--R..5.8-.5..a.", 0.25, 38);
    const auto bassPause = Bass(pause, "R.....8.7.5.R...", 0.25, 38);

    const Phrase bass = Rest(8) + Slice(bassA, 0, 8) + bassA * 2 + bassB + bassA + bassPause + bassB +
                        Slice(bassA, 16, 28) + ReadMelody("o2 d1");
    const Phrase beat = WithFill(Beat(16)) + WithFill(Beat(32)) * 4 + WithFill(Drums({{kHat, "x...x..."}}, 0.25, 16)) +
                        WithFill(Beat(32)) + Beat(12) + Drums({{kKick, "X"}}, 4, 4);
    const Phrase lead = Rest(16) + tuneA + Rest(32) + tuneB + tuneA + tunePause + tuneB + Slice(tuneA, 16, 32);
    const auto stabs = [&](bool minor) {
        const Phrase inA = Stabs(a, minor), inB = Stabs(b, minor);
        return Rest(16) + inA * 2 + inB + inA + Rest(16) + inB + Slice(inA, 16, 32);
    };

    return {"Backstreet Shuffle",
            104,
            {7, 5},
            {-1, 1, 1, -1},
            Samples(),
            {{Only(beat, kHat), kHatSample, kBeatChannel},
             {Only(beat, kKick), kKickSample, kBeatChannel},
             {Only(beat, kSnare), kSnareSample, kBeatChannel},
             {Detached(bass, 0.9), kBassSample, kBassChannel},
             {stabs(true), kMinorStab, kStabChannel},
             {stabs(false), kMajorStab, kStabChannel},
             // The lead's echo sounds in its own pauses, as far as four channels allow one.
             {Louder(Delayed(lead, 1.5), 0.35), kLeadSample, kLeadChannel},
             {lead, kLeadSample, kLeadChannel, false, 0x53}}};
}

}  // namespace hullrider::demo
