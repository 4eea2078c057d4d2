#include <gtest/gtest.h>

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

TEST(ModuleFiles, SoundTheKeyOfTheScoreAndEndWhereItSaysInEveryFormat) {
    const struct {
        const char* name;
        std::string (*write)(const Module&);
    } formats[] = {{"MOD", WriteMod}, {"S3M", WriteS3m}, {"XM", WriteXm}};
    for (const auto& [name, write] : formats) {
        SCOPED_TRACE(name);
        const Stereo sound = HearModule(write(Sequence(OneNote("o4 a1^1 r1^1"))), "One note");
        ASSERT_GE(sound.frames(), FramesOf(7.6));  // 16 beats at 125 a minute
        EXPECT_NEAR(FrequencyOf(sound, 0.5, 3.5), 440, 2);
        EXPECT_NEAR(LongestSilence(sound, 0.001), 8 * 60 / 125.0, 0.1);
    }
}

}  // namespace
}  // namespace hullrider::demo
