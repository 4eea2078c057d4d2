#include <gtest/gtest.h>

#include <cstdio>
#include <stdexcept>

#include "demo_music/harmony.h"
#include "demo_music/notation.h"

namespace hullrider::demo {
namespace {

// "key:start+beats" of every note.
std::string Listed(const Phrase& phrase) {
    std::string text;
    for (const Note& note : phrase.notes) {
        char entry[64];
        std::snprintf(entry, sizeof entry, "%s%d:%g+%g", text.empty() ? "" : " ", note.key, note.start, note.beats);
        text += entry;
    }
    return text;
}

TEST(Notation, ReadsNotesOctavesLengthsTiesAndRests) {
    const struct {
        const char* text;
        const char* notes;
    } cases[] = {
        {"o5 c4 d8. e16 f2", "72:0+1 74:1+0.75 76:1.75+0.25 77:2+2"},
        {"o4 l8 c+ b- r g ^8 c4 r8", "61:0+0.5 70:0.5+0.5 67:1.5+1 60:2.5+1"},
        {"o4 b2 >c2 | ^2 <b2", "71:0+2 72:2+4 71:6+2"},
        {"r2 ^4. c8", "60:3.5+0.5"},
    };
    for (const auto& [text, notes] : cases) {
        EXPECT_EQ(Listed(ReadMelody(text)), notes) << text;
    }
}

TEST(Notation, RefusesWhatIsNotMusic) {
    for (const char* text : {"o4 h4", "c0", "o", "^4", "v", "l", "c4 | d1", "o4 c2 d4", "l. c"}) {
        EXPECT_THROW(ReadMelody(text), std::invalid_argument) << text;
    }
}

TEST(Harmony, ReadsBarsOfChords) {
    const Progression chords = ReadChords("Dm9 | G13 C/E | %");
    ASSERT_EQ(chords.size(), 4u);
    EXPECT_EQ(BeatsOf(chords), 12);
    EXPECT_EQ(chords[2].start, 6);
    EXPECT_EQ(chords[3].beats, 4);
    EXPECT_EQ(chords[3].chord.root, 0);
    EXPECT_EQ(chords[3].chord.bass, 4);
    EXPECT_EQ(chords[0].chord.intervals, (std::vector<int>{0, 3, 7, 10, 14}));
    for (const char* text : {"H", "Cfoo", "%", "C | | D", "C/"}) {
        EXPECT_THROW(ReadChords(text), std::invalid_argument) << text;
    }
}

}  // namespace
}  // namespace hullrider::demo
