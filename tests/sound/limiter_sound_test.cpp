// The sum of all channels at and beyond full scale.
#include <cmath>
#include <limits>
#include <numbers>

#include "audio/limiter.h"
#include "tests/sound/sound.h"

namespace hullrider {

namespace {

constexpr size_t kDelay = 220;  // frames: 5 ms at 44100 Hz

// What is not the tone itself, as a part of it; over a whole number of its waves.
double Distortion(const Samples& mono, uint32_t rate, double hz) {
    const double tone = AmplitudeAt(mono, rate, hz) / std::numbers::sqrt2, all = Rms(mono);
    return std::sqrt(std::max(0.0, all * all - tone * tone)) / tone;
}

// The longest run of equal samples that are nearly full.
size_t LongestFlatTop(const Samples& mono) {
    size_t longest = 0, run = 0;
    for (size_t i = 1; i < mono.size(); i++) {
        run = std::fabs(mono[i]) > 0.99f && mono[i] == mono[i - 1] ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

}  // namespace

class LimiterSound : public SoundTest {
protected:
    void SetUp() override { ASSERT_TRUE(InitManualOutput(kRate, true)); }

    HSTREAM PlayTone(double hz, double amplitude, const char* name = "tone.wav") {
        return Play(Save(name, Tone(kRate, 2, hz, 1.0, amplitude), WavFormat::kFloat), BASS_SAMPLE_LOOP);
    }
};

TEST_F(LimiterSound, BelowFullScaleEverySampleIsAsItWasOnlyLater) {
    TestSound sound = Noise(kRate, 30000);
    for (const float full : {1.0f, -1.0f, 32767.0f / 32768.0f}) {
        sound.samples[20000] = full;
        const HSTREAM stream = Play(Save("noise.wav", sound, WavFormat::kFloat));
        const Samples out = Render(30000 + kDelay, 441);
        for (size_t i = 0; i < out.size(); i++) {
            ASSERT_EQ(out[i], i < kDelay * 2 ? 0.0f : sound.samples[i - kDelay * 2]) << i;
        }
        Finish(stream);
    }
}

TEST_F(LimiterSound, PlacesAreThoseOfWhatIsHeard) {
    const HSTREAM stream = PlayTone(441.0, 0.5);
    Render(100);
    EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), 0u);
    Render(1000);
    EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), (1100 - kDelay) * 8u);
    EXPECT_TRUE(BASS_ChannelPause(stream));
    Render(1000);
    const uint64_t place = BASS_ChannelGetPosition(stream, BASS_POS_BYTE);
    EXPECT_TRUE(BASS_ChannelPlay(stream, false));
    EXPECT_EQ(BASS_ChannelGetPosition(stream, BASS_POS_BYTE), place) << "after a pause it does not go back";
}

TEST_F(LimiterSound, TwoTonesOfFullScaleStayWithinItAndAreNotCutOff) {
    PlayTone(440.0, 1.0, "one.wav");
    PlayTone(557.0, 1.0, "other.wav");
    for (const size_t block : {1u, 480u, 1024u, 3000u}) {
        const Samples out = Render(kRate, block);
        EXPECT_LE(Peak(out), 1.0f);
        EXPECT_GT(Peak(out), 0.98f);
        EXPECT_LE(LongestFlatTop(Left(out)), 1u);
    }
}

TEST_F(LimiterSound, ATooLoudToneIsTurnedDownNotBent) {
    for (const double hz : {50.0, 100.0, 1000.0, 5000.0}) {
        SCOPED_TRACE(hz);
        const HSTREAM stream = PlayTone(hz, 1.4125);
        Render(kRate / 2);
        const Samples out = Left(Render(kRate));
        EXPECT_LT(Distortion(out, kRate, hz), 0.002);
        EXPECT_NEAR(AmplitudeAt(out, kRate, hz), 1.0, 0.01);
        Finish(stream);
    }
}

TEST_F(LimiterSound, AfterAPeakTheSoundComesBackWithinAThirdOfASecond) {
    TestSound sound = Tone(kRate, 2, 1000.0, 2.0, 0.5);
    for (size_t i = 0; i < 2000; i++) sound.samples[44100 + i] *= 4.0f;  // 22 ms at twice full scale
    Play(Save("peak.wav", sound, WavFormat::kFloat));
    const Samples out = Left(Render(kRate * 2));
    EXPECT_LE(Peak(out), 1.0f);
    const auto loudness = [&](size_t afterMs) {
        const size_t begin = 22050 + 1000 + kDelay + afterMs * kRate / 1000;
        return AmplitudeAt(Part(out, begin, 441), kRate, 1000.0) / 0.5;
    };
    EXPECT_LT(loudness(5), 0.6);
    EXPECT_GT(loudness(120), 0.85);
    EXPECT_GT(loudness(350), 0.99);
    for (size_t i = kRate * 3 / 2; i < out.size(); i++) ASSERT_EQ(out[i], sound.samples[(i - kDelay) * 2]) << i;
}

TEST_F(LimiterSound, BothSidesAreTurnedDownTogether) {
    TestSound sound = Constant(kRate, 20000, 0.25f);
    for (size_t i = 10000; i < 20000; i += 2) sound.samples[i] = 2.0f;
    Play(Save("left.wav", sound, WavFormat::kFloat));
    const Samples out = Render(10000);
    EXPECT_NEAR(out[8000 * 2], 1.0f, 0.001f);
    EXPECT_NEAR(out[8000 * 2 + 1], 0.125f, 0.001f);
}

TEST_F(LimiterSound, WhatIsFreedOrBrokeOffIsHeardToItsEnd) {
    const HSTREAM stream = PlayTone(441.0, 0.5);
    Render(10000);
    BASS_StreamFree(stream);
    const Samples rest = Render(2000);
    EXPECT_GT(Peak(Samples(rest.begin(), rest.begin() + 2 * kDelay)), 0.49f);
    EXPECT_EQ(Peak(Samples(rest.end() - 1000, rest.end())), 0.0f);
}

TEST(Limiter, WhatIsNoNumberIsSilenceAndIsForgotten) {
    for (const uint32_t rate : {8000u, 44100u, 96000u}) {
        SCOPED_TRACE(rate);
        Limiter limiter(rate);
        Samples sound(rate * 2, 0.5f);
        sound[100] = std::numeric_limits<float>::quiet_NaN();
        sound[201] = std::numeric_limits<float>::infinity();
        sound[302] = -1e30f;
        sound[403] = 1e5f;
        for (size_t i = 0; i < sound.size() / 2; i += 100) limiter.Run(sound.data() + i * 2, 100);
        for (const float sample : sound) ASSERT_LE(std::fabs(sample), 1.0f);
        EXPECT_EQ(sound.back(), 0.5f);
    }
}

}  // namespace hullrider
