// SoundFonts as they are changed and as they differ; made here, so that each has a tone of its own.
#include "tests/audio/font_bytes.h"
#include "tests/audio/midi_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

class FontSound : public SoundTest {
protected:
    // With a wave of 100 or 50 samples, key 69 sounds at 441 or 882 Hz.
    HSOUNDFONT LoadFont(const FontShape& shape) {
        const std::string name = "font" + std::to_string(++fonts_) + ".sf2";
        const HSOUNDFONT font = BASS_MIDI_FontInit(folder_.Write(name, FontBytes(shape)).c_str(), 0);
        EXPECT_NE(font, 0u) << BASS_ErrorGetCode();
        return font;
    }
    // One note held for a minute.
    std::string SaveHeldNote() { return SaveMidi(At(0, {0x90, 69, 100}) + At(60'000, {0x80, 69, 0})); }
    static double HeardAt(double hz, const Samples& stereo) { return AmplitudeAt(Left(stereo), kRate, hz); }

    int fonts_ = 0;
};

TEST_F(FontSound, ANewFontIsHeardSoonWithoutAGapAndInItsPlace) {
    const HSOUNDFONT low = LoadFont({.period = 100}), high = LoadFont({.period = 50});
    ASSERT_TRUE(UseFont(0, low));
    const HSTREAM stream = Play(SaveHeldNote());
    Render(kRate * 2);
    const double lowLevel = HeardAt(441.0, Render(kRate / 2)), highBefore = HeardAt(882.0, Render(kRate / 2));
    EXPECT_LT(highBefore, lowLevel / 30);
    ASSERT_TRUE(UseFont(stream, high));
    const double place = PositionSec(stream);
    const Samples change = Render(kRate * 3 / 10);
    EXPECT_NEAR(PositionSec(stream), place + 0.3, 0.001);
    for (size_t i = 0; i + 2000 <= change.size(); i += 2000) EXPECT_GT(Peak(Part(change, i, 2000)), 0.02f);
    // A held note goes over into the new font, with the old one's loudness.
    const Samples after = Render(kRate / 2);
    EXPECT_NEAR(HeardAt(882.0, after), lowLevel, lowLevel / 3);
    EXPECT_LT(HeardAt(441.0, after), lowLevel / 30);
    Render(kRate);
    EXPECT_NEAR(PositionSec(stream), place + 1.8, 0.001);
    // Several changes in a row end with the last.
    for (const HSOUNDFONT font : {low, high, low, high, low}) ASSERT_TRUE(UseFont(stream, font));
    Render(kRate / 2);
    EXPECT_TRUE(BASS_MIDI_FontFree(low) && BASS_MIDI_FontFree(high));  // while it is heard
    EXPECT_NEAR(HeardAt(441.0, Render(kRate / 2)), lowLevel, lowLevel / 10);
    // And it still falls in milliseconds where it is stopped.
    EXPECT_TRUE(BASS_ChannelPause(stream));
    EXPECT_GT(Peak(Part(Render(480), 60, 140)), lowLevel / 3);
}

TEST_F(FontSound, AChangeOfFontNearTheEndOrInARepeatKeepsTheTime) {
    const HSOUNDFONT low = LoadFont({.period = 100}), high = LoadFont({.period = 50});
    ASSERT_TRUE(UseFont(0, low));
    const std::string song = SaveMidi(At(0, {0x90, 69, 100}) + At(2500, {0x80, 69, 0}));  // 4 s with the release
    const HSTREAM stream = Play(song);
    for (const double place : {1.0, 2.4, 3.8, 3.99}) {
        ASSERT_TRUE(BASS_ChannelPlay(stream, true));
        Render(static_cast<size_t>(place * kRate));
        ASSERT_TRUE(UseFont(stream, high));
        Render(static_cast<size_t>((3.999 - place) * kRate));
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PLAYING) << place;
        Render(kRate / 2);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED) << place;
        ASSERT_TRUE(UseFont(stream, low));
    }
    BASS_StreamFree(stream);
    const HSTREAM loop = Play(song, BASS_SAMPLE_LOOP);
    Render(kRate * 9);
    ASSERT_TRUE(UseFont(loop, high));
    EXPECT_GT(HeardAt(882.0, Render(kRate)), 0.01);
    EXPECT_NEAR(PositionSec(loop), 2.0, 0.001);
}

// What cannot be made loud enough without caricature, and what is not there at all, is left soft and silent.
TEST_F(FontSound, FontsOfAnyLevelSoundEquallyLoudAndThoseThatLackInstrumentsAreNoUpset) {
    const std::string song = SaveHeldNote();
    const auto levelThrough = [&](const FontShape& shape) {
        EXPECT_TRUE(UseFont(0, LoadFont(shape)));
        const HSTREAM stream = Play(song);
        Render(kRate);
        const double level = Rms(Render(kRate));
        BASS_StreamFree(stream);
        return level;
    };
    const double common = levelThrough({.amplitude = 0.9});
    EXPECT_NEAR(levelThrough({.amplitude = 0.3}), common, common * 0.05);
    EXPECT_NEAR(levelThrough({.amplitude = 0.1}), common, common * 0.05);
    EXPECT_LT(levelThrough({.amplitude = 0.005}), common / 5);
    const double soft = levelThrough({.amplitude = 0.0005});
    EXPECT_LT(soft, common / 10);
    EXPECT_GT(soft, 0.0);
    EXPECT_LT(levelThrough({.banks = {77}}), 1e-4);
}

}  // namespace hullrider
