#include "demo_music/accompaniment.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/module_pieces.h"
#include "demo_music/random.h"

namespace hullrider::demo {
namespace {

constexpr int kE = 4;

// Every chord two bars long.
constexpr double kSpan = 8;
constexpr auto kChordsA = "Emaj9 | C#m9 | Amaj9 | Bsus4";
constexpr auto kChordsB = "F#m9 | C#m9 | Amaj9 | G#m7 B";
constexpr auto kChordsEnd = "Amaj9 | Emaj9";

constexpr auto kMelodyA = "o5 r2 g+4 b4 | >f+2.< b4 | r2 e4 g+4 | >d+2.< b4 | r2 c+4 e4 | b2. g+4 | f+1 | e2 f+2";
constexpr auto kMelodyB =
    "o5 r4 a4 >c+4 e4 | <g+2. f+4 | r4 e4 g+4 b4 | >d+2 c+2< | b2. a4 | e2 g+4 b4 | >d+2.< b4 | f+2 b2";
constexpr auto kMelodyEnd = "o5 r2 c+4 e4 | b2. g+4 | f+2 g+2 | e1";

enum SampleNumber { kPad = 1, kBell, kDrop, kDeep, kWind };
// Two groups of four for the pad, so that a chord rings into the next one.
enum Channel {
    kPadChannels = 0,
    kOtherPadChannels = 4,
    kBellChannel = 8,
    kEchoChannel,
    kDropChannel,
    kDropEchoChannel,
    kDeepChannel,
    kWindChannel,
    kChannels
};

std::vector<Sample> Samples() {
    const std::vector<double> voices{1, 0.5, 0.35, 0.2, 0.16, 0.1, 0.07, 0.05, 0.03, 0.02};
    const FmPatch bell{{{1, 3.5, 1.3, 1, 3.5, 1}, {2, 1, 0.3, 1, 2, 0.3}}, 0, 0, 1};
    const FmPatch drop{{{1, 2, 0.8, 0.2, 1.2, 1}, {4, 1, 0, 1, 0.4, 0.2}}, 0, 0, 0.5};
    std::vector<Sample> samples{
        EndlessPad("pad", voices, 28, 4, 60, 22050, 21),
        Sampled("bell", FrequencyModulated(bell), {72}, 3, 3, 72, 32000),
        Sampled("drop", FrequencyModulated(drop), {84}, 1.2, 1.2, 84, 32000),
        Additive("deep", {1, 0.3, 0.12, 0.05}, {1, 0.15, 0.04, 0.01}, 1, 40, 11025),
        EndlessPad("wind", {1}, 600, 3, 72, 12000, 22),
    };
    samples[kPad - 1].attackSeconds = 1.6;
    samples[kPad - 1].releaseSeconds = 3;
    samples[kDeep - 1].attackSeconds = 0.3;
    samples[kDeep - 1].releaseSeconds = 0.8;
    samples[kWind - 1].attackSeconds = 4;
    samples[kWind - 1].releaseSeconds = 4;
    samples[kBell - 1].pan = 0.2;
    samples[kDrop - 1].pan = -0.5;
    for (const auto& [number, volume] :
         {std::pair{kPad, 0.75}, {kBell, 0.7}, {kDrop, 0.4}, {kDeep, 0.9}, {kWind, 0.2}}) {
        samples[static_cast<size_t>(number) - 1].volume = volume;
    }
    return samples;
}

// The chords at even places, or those at odd ones.
Phrase PadPart(const Progression& chords, size_t parity) {
    const Voicings voicings = LeadVoices(chords, 4, 60);
    Phrase pad = Rest(BeatsOf(chords));
    for (size_t i = parity; i < chords.size(); i += 2) {
        for (const int key : voicings[i]) pad.notes.push_back({chords[i].start, chords[i].beats, key, 0.7});
    }
    return pad;
}

// Notes of the pentatonic scale that drift up and down, now and then.
Phrase Drops(double beats, double likelihood, Random& random) {
    Phrase drops = Rest(beats);
    int key = 83;
    for (double beat = 0; beat < beats; beat += 0.5) {
        key = StepInScale(MajorPentatonic(kE), key, random.Below(5) - 2);
        if (key < 76) key += 12;
        if (key > 95) key -= 12;
        if (random.Unit() < likelihood) drops.notes.push_back({beat, 0.5, key, 0.3 + 0.4 * random.Unit()});
    }
    return drops;
}

}  // namespace

TrackerPiece ComposeSlowAurora() {
    Random random(23);
    const Progression a = ReadChords(kChordsA, kSpan), b = ReadChords(kChordsB, kSpan),
                      end = ReadChords(kChordsEnd, kSpan);
    const Phrase tuneA = ReadMelody(kMelodyA), tuneB = ReadMelody(kMelodyB), tuneEnd = ReadMelody(kMelodyEnd);
    const double partBeats = tuneA.beats;

    const auto pad = [&](size_t parity) {
        return Swelling(Slice(PadPart(a, parity), 0, 16), 0.7, 1) + PadPart(a, parity) + PadPart(b, parity) +
               PadPart(a, parity) + Detached(PadPart(end, parity), 0.6);
    };
    const auto deepOf = [](const Progression& chords) { return Bass(chords, "R---", 2, 28); };
    const Phrase bell = Rest(16) + tuneA + tuneB + Embellished(tuneA, Major(kE), 0.5) + Louder(tuneEnd, 0.8);
    const Phrase drops = Drops(16, 0.12, random) + Drops(partBeats, 0.2, random) + Drops(partBeats, 0.35, random) +
                         Drops(partBeats, 0.25, random) + Drops(16, 0.12, random);
    const Phrase deep = Rest(16) + deepOf(a) + deepOf(b) + deepOf(a) + Detached(deepOf(end), 0.6);
    const Phrase wind =
        ReadMelody("o5 e1^1^1^1 | b1^1^1^1^1^1 | e1^1^1^1^1^1 | b1^1^1^1^1^1 | e1^1^1^1^1^1 | b1^1 r1 r1");

    return {"Slow Aurora",
            72,
            {6, 6},
            std::vector<double>(kChannels),
            Samples(),
            {{pad(0), kPad, kPadChannels},
             {pad(1), kPad, kOtherPadChannels},
             {bell, kBell, kBellChannel},
             {Louder(Delayed(bell, 1.5), 0.4), kBell, kEchoChannel},
             {drops, kDrop, kDropChannel},
             {Louder(Delayed(drops, 0.75), 0.45), kDrop, kDropEchoChannel},
             {deep, kDeep, kDeepChannel},
             {wind, kWind, kWindChannel}}};
}

}  // namespace hullrider::demo
