#include <gtest/gtest.h>

#include <stdexcept>

#include "demo_music/notation.h"
#include "demo_music/tracker/module.h"
#include "tests/demo/heard.h"

namespace hullrider::demo {
namespace {

// One note of a4 for four bars, played by a sample made for another key and rate.
TrackerPiece OneNote(const char* note) {
    return {"One note",          125, {6, 6}, {0, 0, 0, 0}, {Additive("sine", {1}, {1}, 0.1, 57, 8287.14)},
            {{ReadMelody(note)}}};
}

double FrequencyOf(const Stereo& sound, double fromSec, double toSec) {
    int crossings = 0;
    for (size_t i = FramesOf(fromSec); i < FramesOf(toSec); ++i) {
        if (sound.left[i] < 0 && sound.left[i + 1] >= 0) ++crossings;
    }
    return crossings / (toSec - fromSec);
}

TEST(ModuleFiles, SoundTheKeyOfTheScoreInEveryFormat) {
    const struct {
        const char* name;
        std::string (*write)(const Module&);
    } formats[] = {{"MOD", WriteMod}, {"S3M", WriteS3m}, {"XM", WriteXm}};
    for (const auto& [name, write] : formats) {
        SCOPED_TRACE(name);
        const Stereo sound = HearModule(write(Sequence(OneNote("o4 a1^1^1^1"))), "One note");
        ASSERT_GE(sound.frames(), FramesOf(7.6));  // 16 beats at 125 a minute
        EXPECT_NEAR(FrequencyOf(sound, 1, 6), 440, 2);
    }
}

TEST(ModuleFiles, ANoteEndsWhereTheScoreSays) {
    for (const auto write : {WriteMod, WriteS3m, WriteXm}) {
        const Stereo sound = HearModule(write(Sequence(OneNote("o4 a1^1 r1^1"))), "One note");
        ASSERT_GE(sound.frames(), FramesOf(7.6));
        EXPECT_NEAR(LongestSilence(sound, 0.001), 8 * 60 / 125.0, 0.1);
    }
}

TEST(ModuleFiles, ANoteBeyondTheFormatIsRefused) {
    EXPECT_THROW(WriteMod(Sequence(OneNote("o7 c1"))), std::out_of_range);
    EXPECT_THROW(WriteMod(Sequence(OneNote("o1 c1"))), std::out_of_range);
    EXPECT_THROW(WriteXm(Sequence(OneNote("o9 c1"))), std::out_of_range);
    EXPECT_THROW(WriteS3m(Sequence(OneNote("o9 c1"))), std::out_of_range);
}

TEST(Sequence, EqualPatternsAreKeptOnce) {
    const Module module = Sequence(OneNote("o4 a1 r1 r1 r1 | b1 r1 r1 r1 | a1 r1 r1 r1"));
    EXPECT_EQ(module.order, (std::vector<int>{0, 1, 0}));
    EXPECT_EQ(module.patterns.size(), 2u);
}

TEST(Sequence, AChordBecomesAnArpeggioUntilTheNextNote) {
    TrackerPiece piece = OneNote("o4 c4 r2.");
    Phrase chord = Rest(4);
    chord.notes = {{0, 2, 60}, {0, 2, 64}, {0, 2, 67}, {1, 1, 72}};
    piece.voices = {{chord, 1, 0, true}};
    const Pattern pattern = Sequence(piece).patterns[0];
    for (size_t row = 0; row < 4; ++row) {
        EXPECT_EQ(pattern[row].cells[0].effect, Effect::kArpeggio);
        EXPECT_EQ(pattern[row].cells[0].parameter, 0x47);
    }
    EXPECT_EQ(pattern[0].cells[0].key, 60);
    EXPECT_EQ(pattern[4].cells[0].key, 72);
    EXPECT_EQ(pattern[4].cells[0].effect, Effect::kNone);
    EXPECT_EQ(pattern[8].cells[0].key, Cell::kRelease);
}

}  // namespace
}  // namespace hullrider::demo
