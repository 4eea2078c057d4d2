// Volume as it comes out: a constant signal of 1 shows the gain of every single frame.
#include <cmath>
#include <cstdlib>

#include "audio/ahead.h"
#include "tests/sound/sound.h"

namespace hullrider {

class VolumeSound : public SoundTest {
protected:
    HSTREAM PlayOnes(uint32_t rate = kRate) {
        return Play(Save("ones.wav", Constant(rate, rate * 2, 1.0f), WavFormat::kFloat), BASS_SAMPLE_LOOP);
    }
    static bool Set(HSTREAM stream, float value) { return BASS_ChannelSetAttribute(stream, BASS_ATTRIB_VOL, value); }
    static bool Slide(HSTREAM stream, float value, uint32_t ms) {
        return BASS_ChannelSlideAttribute(stream, BASS_ATTRIB_VOL, value, ms);
    }
    static float Get(HSTREAM stream) {
        float value = -1.0f;
        EXPECT_TRUE(BASS_ChannelGetAttribute(stream, BASS_ATTRIB_VOL, &value));
        return value;
    }
    static bool Slides(HSTREAM stream) { return BASS_ChannelIsSliding(stream, BASS_ATTRIB_VOL); }

    // The greatest distance of the gain, frame by frame, from a line of so many frames.
    static double DistanceFromLine(const Samples& stereo, double from, double to, size_t lineFrames) {
        double worst = 0.0;
        for (size_t i = 0; i < stereo.size() / 2; i++) {
            const double part = std::min(1.0, static_cast<double>(i) / static_cast<double>(lineFrames));
            const double ideal = from + (to - from) * part;
            worst = std::max(worst, std::fabs(static_cast<double>(stereo[i * 2]) - ideal));
            worst = std::max(worst, std::fabs(static_cast<double>(stereo[i * 2 + 1]) - ideal));
        }
        return worst;
    }
};

TEST_F(VolumeSound, SlidesFollowTheLineToTheSampleInBlocksOfAnySize) {
    for (const size_t block : {1u, 441u, 1764u, 5000u}) {
        SCOPED_TRACE(block);
        const HSTREAM stream = PlayOnes();
        Set(stream, 0.0f);
        Slide(stream, 0.8f, 1000);
        EXPECT_TRUE(Slides(stream));
        EXPECT_LT(DistanceFromLine(Render(44200, block), 0.0, 0.8, 44100), 0.0008);
        EXPECT_FALSE(Slides(stream));
        EXPECT_EQ(Get(stream), 0.8f);
        Finish(stream);
    }
}

TEST_F(VolumeSound, ASlideBeginsWhereTheVolumeIsAndReplacesARunningOne) {
    const HSTREAM stream = PlayOnes();
    Slide(stream, 0.0f, 1000);
    EXPECT_LT(DistanceFromLine(Render(11025), 1.0, 0.75, 11025), 0.001);
    EXPECT_NEAR(Get(stream), 0.75f, 0.0001f);
    Slide(stream, 1.0f, 500);
    EXPECT_LT(DistanceFromLine(Render(23000), 0.75, 1.0, 22050), 0.001);
}

// A slide in no time is a set.
TEST_F(VolumeSound, OrdersBetweenTwoBlocksArePutTogether) {
    for (const bool asSlide : {false, true}) {
        const HSTREAM stream = PlayOnes();
        Render(441);
        Slide(stream, 0.9f, 5000);
        asSlide ? Slide(stream, 0.25f, 0) : Set(stream, 0.25f);
        EXPECT_EQ(Get(stream), 0.25f);
        EXPECT_FALSE(Slides(stream));
        Slide(stream, 0.9f, 60000);
        Slide(stream, 0.5f, 1000);
        EXPECT_EQ(Get(stream), 0.25f);
        const Samples out = Render(44100);
        // After the few milliseconds in which the jump from 1.0 is smoothed, exactly the line from 0.25.
        for (const size_t frame : {500u, 22050u, 44000u}) {
            EXPECT_NEAR(static_cast<double>(out[frame * 2]), 0.25 + 0.25 * static_cast<double>(frame) / 44100.0, 5e-4);
        }
        Finish(stream);
    }
}

TEST_F(VolumeSound, AHardSetIsReachedWithinTenMillisecondsAndWithoutAStep) {
    const HSTREAM stream = PlayOnes();
    Render(441);
    for (const float value : {0.0f, 1.0f, 0.3f}) {
        Set(stream, value);
        EXPECT_EQ(Get(stream), value);
        const Samples out = Render(2000, 160);
        EXPECT_LT(SteepestStep(out), 0.006);
        EXPECT_NEAR(out[441 * 2], value, 1e-6f);
    }
    // A set while the one before is still being smoothed goes on from what is heard.
    Samples out;
    for (const float value : {1.0f, 0.0f, 0.8f, 0.1f}) {
        Set(stream, value);
        Append(out, Render(80));
    }
    Append(out, Render(500));
    EXPECT_LT(SteepestStep(out), 0.006);
    EXPECT_NEAR(out.back(), 0.1f, 1e-6f);
}

TEST_F(VolumeSound, AHardSetBeforeTheFirstSoundHoldsFromTheFirstSample) {
    const HSTREAM stream = Open(Save("ones.wav", Constant(kRate, kRate, 1.0f), WavFormat::kFloat));
    Render(441);
    Set(stream, 0.5f);
    BASS_ChannelPlay(stream, false);
    EXPECT_EQ(Render(100)[0], 0.5f);
}

TEST_F(VolumeSound, SlidesGoOnWhileNothingPlays) {
    const HSTREAM stream = Open(Save("ones.wav", Constant(kRate, kRate, 1.0f), WavFormat::kFloat));
    Slide(stream, 0.0f, 1000);
    Render(22050);
    EXPECT_NEAR(Get(stream), 0.5f, 0.0001f);
    Render(22050);
    EXPECT_EQ(Get(stream), 0.0f);
    EXPECT_FALSE(Slides(stream));
}

TEST_F(VolumeSound, RefusesWhatIsNoVolume) {
    const HSTREAM stream = PlayOnes();
    for (const float value : {-0.1f, NAN, INFINITY, -INFINITY, 1e9f}) {
        EXPECT_FALSE(Set(stream, value)) << value;
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
        EXPECT_FALSE(Slide(stream, value, 100)) << value;
    }
    EXPECT_FALSE(BASS_ChannelSetAttribute(stream, 77, 0.5f));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLTYPE);
    EXPECT_EQ(Get(stream), 1.0f);
}

TEST_F(VolumeSound, TheLevelIsThatBeforeTheVolume) {
    TestSound sound = Tone(kRate, 2, 1000.0, 1.0, 0.5);
    for (size_t i = 1; i < sound.samples.size(); i += 2) sound.samples[i] *= 0.5f;
    const HSTREAM stream = Play(Save("tone.wav", sound));
    Set(stream, 0.0f);
    EXPECT_EQ(Peak(Render(4410)), 0.0f);
    const uint32_t level = BASS_ChannelGetLevel(stream);
    EXPECT_NEAR(level & 0xFFFF, 16384, 40);
    EXPECT_NEAR(level >> 16, 8192, 40);
    BASS_ChannelPause(stream);
    EXPECT_EQ(BASS_ChannelGetLevel(stream), BASS_LEVEL_ERROR);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_NOPLAY);
}

TEST_F(VolumeSound, TheLevelForgetsWithinFiftyMilliseconds) {
    TestSound sound = Tone(kRate, 2, 1000.0, 1.0, 0.5);
    std::fill(sound.samples.begin() + 44100, sound.samples.end(), 0.0f);
    const HSTREAM stream = Play(Save("half.wav", sound));
    Render(22050 + 100);
    EXPECT_GT(BASS_ChannelGetLevel(stream) & 0xFFFF, 16000u);
    Render(2205);
    EXPECT_EQ(BASS_ChannelGetLevel(stream), 0u);

    // Nor is it that from before a pause.
    SeekToFrame(stream, 1000);
    Render(4410);
    EXPECT_GT(BASS_ChannelGetLevel(stream) & 0xFFFF, 16000u);
    BASS_ChannelPause(stream);
    Render(4410);
    BASS_ChannelPlay(stream, false);
    EXPECT_EQ(BASS_ChannelGetLevel(stream), 0u);
}

// A song gives way when it has fallen silent, not when its rests add up.
TEST_F(VolumeSound, AQuietLastsFromTheLastSoundOn) {
    TestSound sound = Tone(kRate, 2, 1000.0, 2.0, 0.5);
    for (const double at : {0.2, 1.0}) std::fill_n(sound.samples.begin() + std::lround(at * kRate) * 2, kRate, 0.0f);
    const HSTREAM stream = Play(Save("rests.wav", sound));
    for (const auto& [seconds, quietSec] : {std::pair{0.6, 0.4}, {0.3, 0.0}, {0.3, 0.2}, {0.5, 0.0}}) {
        Render(static_cast<size_t>(seconds * kRate));
        EXPECT_NEAR(QuietSec(stream), quietSec, 0.06);
    }
}

TEST_F(VolumeSound, TwoStreamsAddUp) {
    const TestSound one = Noise(kRate, 4410), other = Tone(kRate, 2, 700.0, 0.1, 0.25);
    const HSTREAM first = Play(Save("one.wav", one));
    Play(Save("other.wav", other));
    Set(first, 0.5f);
    const Samples out = Render(4410);
    for (size_t i = 0; i < out.size(); i++) ASSERT_NEAR(out[i], one.samples[i] * 0.5f + other.samples[i], 2e-5f) << i;
}

}  // namespace hullrider
