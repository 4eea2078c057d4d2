#include "demo_music/accompaniment.h"
#include "demo_music/feel.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/midi_pieces.h"

namespace hullrider::demo {
namespace {

constexpr int kF = 5;

constexpr auto kChordsA =
    "Dm9 | % | Gm9 | C13 | Fmaj9 | Bbmaj7 | Em7b5 | A7b9 | Dm9 | D7b9 | Gm9 | C13 | Am7 | D7b9 | Gm9 A7b9 | Dm6";
constexpr auto kChordsB =
    "Bbmaj9 | % | Am7 | Dm7 | Gm7 | C13 | Fmaj9 | Cm7 F7 | Bbmaj9 | Eb13 | Am7 | D7b9 | Gm9 | C13 | Em7b5 | A7b9";
constexpr auto kChordsIntro = "Dm9 | Gm9 | Dm9 | Em7b5 A7b9";
constexpr auto kChordsEnd = "Gm9 | A7b9 | Dm9 | Gm9 | Dm9 | Dm6";

constexpr auto kMelodyA =
    "o5 r4 a8 f4 e8 f8 a8 | ^2 r8 g8 f8 e8 | r8 d4 f8 b-4 a8 g8 | ^4. e8^2 |"
    "r8 g4 a8 >c4< a8 g8 | ^4. d8^4 r8 d8 | e8 g8 b-4 a8 g4 e8 | c+2^4 r4 |"
    "r4 a8 f4 e8 f8 a8 | ^4 >c4< a8 f+8 e-8 d8 | r8 d4 f8 b-4 a8 b-8 | >c2 d8 c8< b-8 a8 |"
    "^4. g8^4 e4 | f+4. a8^4 e-4 | d4 b-8 a4 g8 e4 | d2^4 r4";
constexpr auto kMelodyB =
    "o5 d4. f8^4 a4 | g8 f4 d8^2 | c4. e8^4 g4 | f8 e4 c8^2 | b-4 >d8 c4< b-8 a8 g8 | a4 g8 e4. r4 |"
    "g8 a8 >c8 e8^4 c4< | >e-2^4< a4 | >d4. c8<^4 a4 | >c4.< b-8^4 g4 | g4. e8^4 c4 | f+4 a8 >c4< a8 f+4 |"
    "a4 g8 b-4 a8 g8 f8 | e2^8 g8 a8 b-8 | a8 g4 e8^4 d4 | c+2^4 r4";
constexpr auto kMelodyEnd = "o5 r8 d4 f8 b-4 a8 g8 | e4. c+8^2 | r4 a8 f4 e8 f8 a8 | ^4. b-8 a4 g4 | f4. e8^2 | d1";

struct Band {
    Phrase guitar, bass, drums, strings;
};

Phrase Groove(double beats) {
    return Drums(
        {{kRim, "x..x..x...x..x.."}, {kKick, "x..ox..ox..ox..o"}, {kShaker, "xoxoxoxo"}, {kHat, "....o.......o..."}},
        0.5, beats);
}

Band Accompany(const char* text) {
    const Progression chords = ReadChords(text);
    Band band;
    band.guitar = Comp(chords, LeadVoices(chords, 4, 60), "x--o-x-..x--o-x-", 0.5);
    band.bass = Bass(chords, "R--55--n", 0.5, 33);
    band.drums = Groove(BeatsOf(chords));
    band.strings = Comp(chords, LeadVoices(chords, 3, 67), "o-------", 0.5);
    return band;
}

}  // namespace

MidiSong ComposeCornerTable() {
    Random random(2);
    const Band intro = Accompany(kChordsIntro), a = Accompany(kChordsA), b = Accompany(kChordsB),
               end = Accompany(kChordsEnd);
    const Phrase melodyA = ReadMelody(kMelodyA), melodyB = ReadMelody(kMelodyB), melodyEnd = ReadMelody(kMelodyEnd);
    const Scale scale = Major(kF);

    // The flute sings, the vibraphone answers; at the return they share the tune in thirds.
    const Phrase flute = Rest(16) + melodyA + Rest(melodyB.beats) + Embellished(melodyA, scale, 0.25) + melodyEnd;
    const Phrase vibes = Rest(16 + melodyA.beats) + melodyB + Louder(Harmonised(melodyA, scale, -2), 0.75) +
                         Louder(Harmonised(melodyEnd, scale, -2), 0.8);
    const Phrase guitar = intro.guitar + a.guitar + b.guitar + a.guitar + Swelling(end.guitar, 1, 0.7);
    const Phrase bass = Rest(8) + Slice(intro.bass, 8, 16) + a.bass + b.bass + a.bass + end.bass;
    const Phrase drums = Louder(intro.drums, 0.75) + a.drums + b.drums + a.drums + Swelling(end.drums, 1, 0.5);
    const Phrase strings = Rest(16 + melodyA.beats) + b.strings + Swelling(a.strings, 0.6, 0.9) + end.strings;

    MidiSong song{"The Corner Table", 4, {{0, 132}, {16 + 48 * 4 + 20, 118}}, {}};
    const auto play = [&](const Phrase& phrase, double time) {
        return Humanised(Pulsed(phrase, 4, 0.1), random, time, 0.15);
    };
    song.tracks = {
        {"Flute", kFlute, 98, 72, 60, 0, play(flute, 0.05), {}},
        {"Vibraphone", kVibraphone, 96, 50, 55, 20, play(vibes, 0.04), {}},
        {"Guitar", kNylonGuitar, 90, 40, 40, 0, play(Strummed(guitar, 0.02), 0.02), {}},
        {"Bass", kAcousticBass, 102, 64, 20, 0, play(bass, 0.02), {}},
        {"Strings", kStrings, 57, 84, 80, 0, play(strings, 0), {}},
        {"Drums", kDrumKit, 84, 64, 30, 0, play(drums, 0.015), {}},
    };
    return song;
}

}  // namespace hullrider::demo
