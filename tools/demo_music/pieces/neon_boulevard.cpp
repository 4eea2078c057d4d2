#include "demo_music/accompaniment.h"
#include "demo_music/feel.h"
#include "demo_music/notation.h"
#include "demo_music/pieces/midi_pieces.h"

namespace hullrider::demo {
namespace {

constexpr int kC = 0;

constexpr auto kVerseChords = "Am7 | Fmaj7 | C | G | Am7 | Fmaj7 | C | G";
constexpr auto kChorusChords = "F | G | Am | C/E | F | G | Em7 | Am";
constexpr auto kBreakChords = "Dm7 | Am7 | Fmaj7 | G";

constexpr auto kVerse =
    "o5 r8 e4 e8 d8 c8 d8 e8 | ^4 c4 r4 <a8 b8> | c8 e4 g8^4 e8 d8 | d4. <b8>^4 r4 |"
    "r8 e4 e8 d8 c8 d8 g8 | ^4 e4 r8 c8 d8 e8 | g4. e8^4 d8 c8 | d2^4 r4";
constexpr auto kChorus =
    "o5 v8 a4. g8 a4 >c4< | b4. g8^4 d4 | e4. d8 e4 g4 | g2^8 e8 g8 a8 |"
    "v9 >c4.< a8^4 >c4< | >d4.< b8^4 >d4< | v8 >e4. d8< b4 g4 | a2^4 r4";
constexpr auto kBreak = "o5 v6 r4 f8 e4 d8 f4 | e2^4 r4 | r4 a8 g4 f8 a4 | b2 >d2<";

struct Band {
    Phrase bass, chords, arpeggio, pad;
};

Band Accompany(const char* text) {
    const Progression chords = ReadChords(text);
    const Voicings middle = LeadVoices(chords, 3, 62), high = LeadVoices(chords, 3, 74);
    return {Bass(chords, "RRR8RRR8RRR8R585", 0.5, 33), Comp(chords, middle, "x..x..x.", 0.5),
            Arpeggio(chords, high, "1323432313234323", 0.25), Comp(chords, middle, "x-------", 0.5)};
}

Phrase VerseBeat(double beats) {
    return Drums({{kKick, "X...x..."}, {kSnare, "..x...x."}, {kHat, "xoxoxoxo"}}, 0.5, beats);
}

Phrase ChorusBeat(double beats) {
    return Drums(
               {{kKick, "X.x.X.x.X.x.X.xo"}, {kSnare, "..X...X...X...Xo"}, {kHat, "oooooooo"}, {kOpenHat, ".x.x.x.x"}},
               0.5, beats) &
           Drums({{kCrash, "x"}}, beats, beats);
}

// The last two beats roll into the next part.
Phrase WithFill(const Phrase& beat) {
    return Slice(beat, 0, beat.beats - 2) +
           Drums({{kSnare, "xoxoxxXX"}, {kTom, "..x..x.x"}, {kKick, "x...x..."}}, 0.25, 2);
}

}  // namespace

MidiSong ComposeNeonBoulevard() {
    Random random(3);
    const Band verse = Accompany(kVerseChords), chorus = Accompany(kChorusChords), bridge = Accompany(kBreakChords);
    const Phrase tune = ReadMelody(kVerse), hook = ReadMelody(kChorus), turn = ReadMelody(kBreak);
    const Scale scale = Major(kC);
    const double verseBeats = tune.beats, chorusBeats = hook.beats, breakBeats = turn.beats, introBeats = 16;

    // Intro, verse, verse, chorus, break, verse, chorus, chorus, end.
    const Phrase lead = Rest(introBeats) + tune + Embellished(tune, scale, 0.25) + hook + turn + tune + hook +
                        (hook & Louder(Harmonised(hook, scale, 2), 0.7)) + Rest(introBeats);
    const Phrase verseArp = Louder(verse.arpeggio, 0.75);
    const Phrase introArp = Slice(verse.arpeggio, 0, introBeats);
    const Phrase arpeggio = Swelling(introArp, 0.4, 0.9) + verseArp * 2 + chorus.arpeggio + bridge.arpeggio + verseArp +
                            chorus.arpeggio * 2 + Swelling(introArp, 0.9, 0.2);
    const Phrase bass = Rest(introBeats) + verse.bass * 2 + chorus.bass + Louder(bridge.bass, 0.8) + verse.bass +
                        chorus.bass * 2 + Slice(verse.bass, 0, 8) + ReadMelody("o2 a1 | r1");
    const Phrase chords = Rest(introBeats + verseBeats) + verse.chords + chorus.chords + Rest(breakBeats) +
                          verse.chords + chorus.chords * 2 + Rest(introBeats);
    const Phrase introPad = Slice(verse.pad, 0, introBeats);
    const Phrase pad = Swelling(introPad, 0.5, 0.9) + Louder(verse.pad, 0.8) * 2 + chorus.pad + bridge.pad +
                       Louder(verse.pad, 0.8) + chorus.pad * 2 + Swelling(introPad, 0.9, 0.4);
    const Phrase drums = Rest(introBeats - 2) + Drums({{kSnare, "..xxxxXX"}}, 0.25, 2) + VerseBeat(verseBeats) +
                         WithFill(VerseBeat(verseBeats)) + WithFill(ChorusBeat(chorusBeats)) +
                         WithFill(Drums({{kKick, "x......."}, {kHat, "x.o.x.o."}}, 0.5, breakBeats)) +
                         WithFill(VerseBeat(verseBeats)) + WithFill(ChorusBeat(chorusBeats)) +
                         WithFill(ChorusBeat(chorusBeats)) + Drums({{kKick, "X"}, {kCrash, "X"}}, 16, 16);

    MidiSong song{"Neon Boulevard", 4, {{0, 112}}, {}};
    const auto play = [&](const Phrase& phrase) { return Humanised(Pulsed(phrase, 4, 0.12), random, 0.015, 0.1); };
    song.tracks = {
        {"Lead", kSawLead, 72, 64, 60, 30, play(Detached(lead, 0.95)), {}},
        {"Arpeggio", kSquareLead, 50, 92, 70, 20, play(Detached(arpeggio, 0.6)), {}},
        {"Chords", kPolySynth, 64, 40, 50, 40, play(Detached(chords, 0.8)), {}},
        {"Pad", kWarmPad, 64, 80, 80, 30, play(pad), {}},
        {"Bass", kSynthBass, 92, 64, 10, 0, play(Detached(bass, 0.85)), {}},
        {"Drums", kDrumKit, 99, 64, 30, 0, play(drums), {}},
    };
    return song;
}

}  // namespace hullrider::demo
