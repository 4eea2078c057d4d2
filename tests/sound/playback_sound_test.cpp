// Playing, pausing, ends, loops and places, to the sample, with WAV files.
#include <thread>

#include "tests/sound/sound.h"

namespace hullrider {

class PlaybackSound : public SoundTest {
protected:
    // Whether `out` is the sound from frame `from` on, for as long as both last, but for the joint if there is one.
    static void ExpectIsPart(const Samples& out, const TestSound& sound, size_t from, size_t joint = kJointFrames) {
        const size_t count = std::min(out.size(), sound.samples.size() - from * 2);
        ASSERT_GT(count, joint * 2);
        for (size_t i = joint * 2; i < count; i++) {
            ASSERT_NEAR(out[i], sound.samples[from * 2 + i], 1e-6f) << "frame " << i / 2 << " after " << from;
        }
    }
};

TEST_F(PlaybackSound, AFilePlaysToItsLastSampleAndStops) {
    TestSound sound = Noise(kRate, 100000);
    sound.samples[sound.samples.size() - 1] = sound.samples[sound.samples.size() - 2] = 0.0f;
    const HSTREAM stream = Play(Save("noise.wav", sound));
    EXPECT_EQ(BASS_ChannelGetLength(stream, BASS_POS_BYTE), 100000u * 8);
    const Samples out = Render(100500);
    ExpectIsPart(out, sound, 0, 0);
    EXPECT_EQ(Peak(Samples(out.begin() + 200000, out.end())), 0.0f);
    EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
    EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), 100000u * 8);

    // Once ended, it plays from the start again, told to restart or not.
    EXPECT_TRUE(BASS_ChannelPlay(stream, false));
    EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PLAYING);
    ExpectIsPart(Render(1000), sound, 0, 0);
}

TEST_F(PlaybackSound, PauseAndStopKeepThePlace) {
    const TestSound sound = Noise(kRate, 50000);
    const HSTREAM stream = Play(Save("noise.wav", sound));
    Render(3000);
    EXPECT_TRUE(BASS_ChannelPause(stream));
    EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PAUSED);
    EXPECT_FALSE(BASS_ChannelPause(stream));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_NOPLAY);
    Render(1000);
    EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), 3000u * 8);
    EXPECT_TRUE(BASS_ChannelPlay(stream, false));
    ExpectIsPart(Render(2000), sound, 3000);
    EXPECT_TRUE(BASS_ChannelStop(stream));
    EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
    Render(1000);
    EXPECT_TRUE(BASS_ChannelPlay(stream, false));
    ExpectIsPart(Render(2000), sound, 5000);
    EXPECT_TRUE(BASS_ChannelPlay(stream, true));
    ExpectIsPart(Render(2000), sound, 0);
}

TEST_F(PlaybackSound, SeeksAreExactAndNothingFromBeforeIsHeard) {
    const TestSound sound = Noise(kRate, 300000);
    const HSTREAM stream = Play(Save("noise.wav", sound));
    for (const size_t frame : {0u, 1u, 298000u, 4095u, 4096u, 4097u, 150000u, 7u}) {
        Render(700);
        ASSERT_TRUE(SeekToFrame(stream, static_cast<int64_t>(frame)));
        EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), frame * 8);
        ExpectIsPart(Render(900), sound, frame);
        EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), (frame + 900) * 8);
    }
    EXPECT_FALSE(SeekToFrame(stream, 300000));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_POSITION);
    EXPECT_FALSE(BASS_ChannelSetPosition(stream, BASS_QWORD_ERROR, BASS_POS_BYTE));
    EXPECT_FALSE(BASS_ChannelSetPosition(stream, 0, 3));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLTYPE);
}

TEST_F(PlaybackSound, OfManySeeksInARowTheLastCounts) {
    const TestSound sound = Noise(kRate, 200000);
    const HSTREAM stream = Play(Save("noise.wav", sound));
    Render(500);
    // Many more pieces than the ring could hold beside each other.
    for (int64_t i = 0; i < 200; i++) {
        SeekToFrame(stream, 900 * i);
        if (i % 10 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ExpectIsPart(Render(1000), sound, 900 * 199);
}

TEST_F(PlaybackSound, LoopsHaveNoGapAndPlacesComeRound) {
    for (const size_t frames : {10u, 1000u, 70000u}) {
        SCOPED_TRACE(frames);
        const TestSound sound = Noise(kRate, frames);
        const HSTREAM stream = Play(Save("loop.wav", sound), BASS_SAMPLE_FLOAT | BASS_SAMPLE_LOOP);
        const size_t rendered = frames * 3 + 4321;
        const Samples out = Render(rendered);
        for (size_t i = 0; i < out.size(); i++) ASSERT_NEAR(out[i], sound.samples[i % (frames * 2)], 1e-6f) << i;
        EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), rendered % frames * 8);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PLAYING);
        EXPECT_TRUE(SeekToFrame(stream, 5));
        const Samples again = Render(kJointFrames + 1);
        EXPECT_NEAR(again.back(), sound.samples[(5 + kJointFrames) % frames * 2 + 1], 1e-6f);
        Finish(stream);
    }
}

TEST_F(PlaybackSound, EveryRateAndLayoutPlaysAtItsPitchAndLevel) {
    struct Case {
        uint32_t rate, channels;
        WavFormat format;
        uint32_t mixRate;
    };
    const Case cases[] = {{8000, 1, WavFormat::kPcm8, 44100},    {11025, 2, WavFormat::kPcm16, 48000},
                          {22050, 1, WavFormat::kPcm16, 44100},  {32000, 2, WavFormat::kPcm24, 48000},
                          {44100, 1, WavFormat::kPcm16, 44100},  {44100, 2, WavFormat::kFloat, 48000},
                          {48000, 2, WavFormat::kPcm16, 44100},  {96000, 2, WavFormat::kPcm24, 44100},
                          {192000, 2, WavFormat::kPcm24, 48000}, {192000, 1, WavFormat::kFloat, 96000},
                          {44100, 2, WavFormat::kPcm16, 22050}};
    for (const Case& test : cases) {
        SCOPED_TRACE(testing::Message() << test.rate << " Hz, " << test.channels << " channels into " << test.mixRate);
        Reopen(test.mixRate);
        const HSTREAM stream = Play(Save("tone.wav", Tone(test.rate, test.channels, 997.0, 1.0), test.format));
        BASS_CHANNELINFO info{};
        ASSERT_TRUE(BASS_ChannelGetInfo(stream, &info));
        EXPECT_EQ(info.freq, test.rate);
        EXPECT_EQ(info.chans, test.channels);
        EXPECT_NEAR(LengthSec(stream), 1.0, 1e-9);
        const Samples out = Render(test.mixRate);
        const Samples middle(out.begin() + test.mixRate / 5, out.end() - test.mixRate / 5);
        EXPECT_NEAR(FrequencyOf(Left(middle), test.mixRate), 997.0, 0.1);
        EXPECT_NEAR(Peak(middle), 0.5f, 0.006f);
        Render(100);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
    }
}

// For most large numbers of channels nobody agrees on which is which.
TEST_F(PlaybackSound, ManyChannelsAreFoldedDownToBothSidesWithoutExceedingTheirLevel) {
    for (const uint32_t channels : {6u, 9u, 10u, 11u, 12u, 13u, 16u, 33u, 64u}) {
        SCOPED_TRACE(channels);
        const HSTREAM stream = Play(Save("many.wav", Tone(kRate, channels, 440.0, 0.3, 0.999)), BASS_SAMPLE_LOOP);
        const float peak = Peak(Render(kRate));
        EXPECT_LE(peak, 1.001f);
        EXPECT_GT(peak, channels == 6 ? 0.9f : 0.8f);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PLAYING);
        Finish(stream);
    }
}

TEST_F(PlaybackSound, PlacesAreInTheFilesOwnTimeAtAnyMixingRate) {
    Reopen(48000);
    const HSTREAM stream = Play(Save("tone.wav", Tone(22050, 1, 440.0, 3.0)));
    Render(48000);
    EXPECT_NEAR(PositionSec(stream), 1.0, 1e-4);
    EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE) % 4, 0u);
    const uint64_t bytes = BASS_ChannelSeconds2Bytes(stream, 2.5);
    EXPECT_EQ(bytes, 55125u * 4);
    ASSERT_TRUE(BASS_ChannelSetPosition(stream, bytes, BASS_POS_BYTE));
    Render(12000);
    EXPECT_NEAR(PositionSec(stream), 2.75, 1e-4);
    EXPECT_EQ(BASS_ChannelSeconds2Bytes(stream, -1.0), BASS_QWORD_ERROR);
}

TEST_F(PlaybackSound, BrokenNumbersInAFileAreSilence) {
    TestSound sound = Constant(kRate, 4000, 0.5f);
    for (size_t i = 0; i < 100; i++) {
        sound.samples[1000 + i] = std::numeric_limits<float>::quiet_NaN();
        sound.samples[3000 + i] = i % 2 == 0 ? std::numeric_limits<float>::infinity() : 1e30f;
    }
    Play(Save("nan.wav", sound, WavFormat::kFloat));
    EXPECT_EQ(Peak(Render(5000)), 0.5f);
}

TEST_F(PlaybackSound, AFileThatIsCutWhileItPlaysEndsOrLoopsWhatIsLeft) {
    constexpr size_t kHeaderBytes = 44, kFramesAhead = 200000;  // frames: more than are read ahead
    constexpr size_t kFramesHeld = 20000;  // more than a decoder reads at once, and could loop without the file
    struct Case {
        size_t bytesLeft;
        uint32_t flags;
        bool goesOn;
    };
    for (const Case& test : {Case{20, BASS_SAMPLE_LOOP, false},
                             {kHeaderBytes, BASS_SAMPLE_LOOP, false},
                             {kHeaderBytes + 5000 * 4, 0, false},
                             {kHeaderBytes + 5000 * 4, BASS_SAMPLE_LOOP, true}}) {
        SCOPED_TRACE(testing::Message() << test.bytesLeft << " bytes left, flags " << test.flags);
        // A file of its own for each: some systems keep one that was freed open for a moment.
        const std::string name = "cut" + std::to_string(test.bytesLeft) + std::to_string(test.flags) + ".wav";
        const std::string path = Save(name, Noise(kRate, 1000000));
        const HSTREAM stream = Play(path, BASS_SAMPLE_FLOAT | test.flags);
        Render(kFramesHeld, 4410);
        std::error_code error;
        std::filesystem::resize_file(PathFromUtf8(path), test.bytesLeft, error);
        if (error) GTEST_SKIP() << "this system does not let a file be cut that is open";
        ASSERT_EQ(std::filesystem::file_size(PathFromUtf8(path), error), test.bytesLeft);
        Render(kFramesAhead, 4410);
        EXPECT_EQ(BASS_ChannelIsActive(stream), test.goesOn ? BASS_ACTIVE_PLAYING : BASS_ACTIVE_STOPPED);
        EXPECT_EQ(Peak(Render(kRate)) > 0.5f, test.goesOn);
        if (test.goesOn) {
            EXPECT_LT(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), 5000u * 8);
        }
        Finish(stream);
    }
}

}  // namespace hullrider
