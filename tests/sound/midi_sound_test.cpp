// MIDI as it sounds through a real SoundFont.
#include "tests/audio/midi_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

class MidiSound : public SoundTest {
protected:
    static constexpr int kOrgan = 19;    // steady
    static constexpr int kOcarina = 79;  // nearly a sine

    void SetUp() override {
        SoundTest::SetUp();
        font_ = BASS_MIDI_FontInit(HULLRIDER_TEST_SOUNDFONT, 0);
        ASSERT_NE(font_, 0u) << "no SoundFont at " HULLRIDER_TEST_SOUNDFONT;
    }
    static std::string ManyNotes() {
        std::string song = At(0, {0xC0, kOrgan});
        for (int i = 0; i < 100; i++) song += At(0, {0x90, 69, 100}) + At(200, {0x80, 69, 0});
        return song;
    }
    static double LoudnessAt(double hz) { return AmplitudeAt(Left(Render(kRate / 2)), kRate, hz); }

    HSOUNDFONT font_ = 0;
};

TEST_F(MidiSound, NotesSoundAtTheirTimeAndPitch) {
    ASSERT_TRUE(UseFont(0, font_));
    const HSTREAM stream = Play(SaveMidi(At(0, {0xC0, kOrgan}) + At(1000, {0x90, 69, 100}) + At(2000, {0x80, 69, 0})));
    BASS_CHANNELINFO info{};
    ASSERT_TRUE(BASS_ChannelGetInfo(stream, &info));
    EXPECT_EQ(info.ctype, BASS_CTYPE_STREAM_MIDI);
    EXPECT_EQ(info.freq, kRate);
    EXPECT_NEAR(LengthSec(stream), 4.5, 0.001);
    EXPECT_LT(Peak(Render(44000)), 1e-3f);
    EXPECT_GT(Peak(Render(1500)), 1e-3f);  // within the 64 frames of a block, and the attack
    Render(kRate / 2);
    const Samples organ = Left(Render(kRate));
    EXPECT_GT(AmplitudeAt(organ, kRate, 440.0), 10 * AmplitudeAt(organ, kRate, 466.2));
    Render(kRate * 3);
    EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
}

TEST_F(MidiSound, ASeekCutsNotesAndCatchesUpWithProgramsControllersAndBends) {
    ASSERT_TRUE(UseFont(0, font_));
    // Ocarina, which has one strong partial, with the volume down, a bend range of 12 by parameter number, bent up an
    // octave, then the volume up again.
    const std::string setUp = At(0, {0xC0, kOcarina}) + At(0, {0xB0, 7, 0}) + At(0, {0xB0, 101, 0}) +
                              At(0, {0xB0, 100, 0}) + At(0, {0xB0, 6, 12}) + At(0, {0xE0, 0x7F, 0x7F});
    const std::string notes =
        At(100, {0x90, 57, 100}) + At(1000, {0xB0, 7, 127}) + At(900, {0x90, 57, 100}) + At(9000, {0x80, 57, 0});
    const HSTREAM stream = Play(SaveMidi(setUp + notes));
    // In the middle of the first note: it was cut, and is silent although its volume comes up.
    ASSERT_TRUE(SeekToFrame(stream, kRate));
    EXPECT_LT(Peak(Render(kRate / 2)), 1e-3f);
    // Before the second: it sounds an octave up, as it would have without the seek.
    ASSERT_TRUE(SeekToFrame(stream, kRate * 19 / 10));
    Render(kRate / 4);
    const Samples bent = Left(Render(kRate / 2));
    EXPECT_NEAR(FrequencyOf(bent, kRate), 440.0, 5.0);
    // Back to the beginning, nothing of it is left, in the room either.
    ASSERT_TRUE(SeekToFrame(stream, 0));
    Render(480);  // the last block's value dies away
    EXPECT_LT(Peak(Render(kRate)), 1e-5f);
}

// A song may ask for another program with every note, and each means reading samples: a quarter of a minute for these.
TEST_F(MidiSound, AFloodOfProgramsIsHeardInTimeAndTheLastOneStands) {
    ASSERT_TRUE(UseFont(0, font_));
    std::string flood;
    for (int i = 0; i < 200'000; i++) flood += At(0, {0xC0 + i % 8, i % 128}) + At(0, {0x90 + i % 8, 60, 1});
    for (int i = 0; i < 100'000; i++) flood += At(0, {0xC0, i % 128});
    Play(SaveMidi(flood + At(0, {0xB0, 120, 0}) + At(1000, {0xC0, kOcarina}) + At(0, {0x90, 69, 100}) +
                  At(1000, {0x80, 69, 0})));
    Render(kRate * 5 / 4);
    EXPECT_NEAR(FrequencyOf(Left(Render(kRate / 2)), kRate), 440.0, 5.0);
}

TEST_F(MidiSound, WithoutAFontItPlaysSilenceInTimeAndSoundsWhenItGetsOne) {
    const HSTREAM stream = Play(SaveMidi(ManyNotes()));
    EXPECT_LT(Peak(Render(kRate)), 1e-5f);
    EXPECT_NEAR(PositionSec(stream), 1.0, 1e-6);
    ASSERT_TRUE(UseFont(stream, font_));
    Render(kRate / 4);
    EXPECT_GT(LoudnessAt(440.0), 0.001);
    EXPECT_NEAR(PositionSec(stream), 1.75, 1e-3);
}

// A font's file may be gone by the time that a stream wants it.
TEST_F(MidiSound, AFontThatCannotBeLoadedAnyMoreLeavesTheOldOneSounding) {
    const std::string copy = folder_.At("copy.sf2");
    std::filesystem::copy_file(HULLRIDER_TEST_SOUNDFONT, PathFromUtf8(copy));
    const HSOUNDFONT gone = BASS_MIDI_FontInit(copy.c_str(), 0);
    ASSERT_NE(gone, 0u);
    std::filesystem::remove(PathFromUtf8(copy));
    const HSTREAM stream = Play(SaveMidi(ManyNotes()));
    testing::internal::CaptureStderr();
    ASSERT_TRUE(UseFont(stream, gone));
    EXPECT_LT(LoudnessAt(440.0), 1e-6);  // none at all until now
    ASSERT_TRUE(UseFont(stream, font_));
    Render(kRate / 4);
    EXPECT_GT(LoudnessAt(440.0), 0.001);
    ASSERT_TRUE(UseFont(stream, gone));
    Render(kRate * 3);
    EXPECT_GT(LoudnessAt(440.0), 0.001);
    EXPECT_NE(testing::internal::GetCapturedStderr().find(copy), std::string::npos);
}

TEST_F(MidiSound, RefusesFontsThatAreNone) {
    const std::string real = [] {
        std::ifstream in(HULLRIDER_TEST_SOUNDFONT, std::ios::binary);
        std::string start(200000, '\0');
        in.read(start.data(), 200000);
        return start;
    }();
    for (const std::string& bytes : {std::string(), std::string("no SoundFont"), WavBytes(Noise(8000, 100)), real}) {
        EXPECT_EQ(BASS_MIDI_FontInit(folder_.Write("bad.sf2", bytes).c_str(), 0), 0u) << bytes.size();
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEFORM) << bytes.size();
    }
    EXPECT_EQ(BASS_MIDI_FontInit(folder_.At("missing.sf2").c_str(), 0), 0u);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEOPEN);
}

}  // namespace hullrider
