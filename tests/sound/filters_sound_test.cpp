// Filters as they sound.
#include <cmath>
#include <complex>
#include <cstring>
#include <limits>
#include <numbers>

#include "tests/sound/effects.h"

namespace hullrider {

namespace {

using Complex = std::complex<double>;

// The analogue prototype of a filter, at the frequency that the bilinear transform puts in the place of `hz`.
Complex Textbook(const BASS_BFX_BQF& filter, double rate, double hz) {
    const double w0 = 2 * std::numbers::pi * static_cast<double>(filter.fCenter) / rate;
    const double w = 2 * std::numbers::pi * hz / rate;
    const Complex s(0, std::tan(w / 2) / std::tan(w0 / 2));
    const double a = std::pow(10.0, static_cast<double>(filter.fGain) / 40), root = std::sqrt(a);
    double q = static_cast<double>(filter.fQ);
    if (filter.fBandwidth != 0.0f) {
        const double half = std::numbers::ln2 / 2 * static_cast<double>(filter.fBandwidth);
        q = 1 / (2 * std::sinh(half * w0 / std::sin(w0)));
    }
    if (filter.fS != 0.0f) q = 1 / std::sqrt((a + 1 / a) * (1 / static_cast<double>(filter.fS) - 1) + 2);
    const Complex plain = s * s + s / q + 1.0;
    switch (filter.lFilter) {
        case BASS_BFX_BQF_LOWPASS:
            return 1.0 / plain;
        case BASS_BFX_BQF_HIGHPASS:
            return s * s / plain;
        case BASS_BFX_BQF_BANDPASS:
            return s / q / plain;
        case BASS_BFX_BQF_BANDPASS_Q:
            return s / plain;
        case BASS_BFX_BQF_NOTCH:
            return (s * s + 1.0) / plain;
        case BASS_BFX_BQF_ALLPASS:
            return (s * s - s / q + 1.0) / plain;
        case BASS_BFX_BQF_PEAKINGEQ:
            return (s * s + s * (a / q) + 1.0) / (s * s + s / (a * q) + 1.0);
        case BASS_BFX_BQF_LOWSHELF:
            return a * (s * s + s * (root / q) + a) / (a * s * s + s * (root / q) + 1.0);
        default:
            return a * (a * s * s + s * (root / q) + 1.0) / (s * s + s * (root / q) + a);
    }
}

Complex ResponseAt(const Samples& impulseResponse, double rate, double hz) {
    Complex sum = 0;
    for (size_t i = 0; i < impulseResponse.size(); i++) {
        const double phase = -2 * std::numbers::pi * hz * static_cast<double>(i) / rate;
        sum += static_cast<double>(impulseResponse[i]) * std::polar(1.0, phase);
    }
    return sum;
}

// The loudest of what lies above 5 kHz in any stretch of some 23 ms, against a full-scale tone.
double SplatterDb(const Samples& stereo, uint32_t rate) {
    const Samples mono = Left(stereo);
    constexpr size_t kWindow = 1024;
    double worst = 0.0;
    for (size_t begin = 0; begin + kWindow <= mono.size(); begin += kWindow / 4) {
        Samples piece = Part(mono, begin, kWindow);
        for (size_t i = 0; i < kWindow; i++) {
            const double phase = 2 * std::numbers::pi * static_cast<double>(i) / kWindow;
            // Blackman-Harris: a steady tone does not reach that far.
            const double weight =
                0.35875 - 0.48829 * std::cos(phase) + 0.14128 * std::cos(2 * phase) - 0.01168 * std::cos(3 * phase);
            piece[i] *= static_cast<float>(weight / 0.35875);
        }
        for (double hz = 5000; hz < 20000; hz += 500) worst = std::max(worst, AmplitudeAt(piece, rate, hz));
    }
    return Decibels(worst);
}

}  // namespace

class FiltersSound : public EffectsSound {
protected:
    HSTREAM OpenImpulse(uint32_t rate) {
        TestSound sound = Constant(rate, rate, 0.0f);
        sound.samples[0] = sound.samples[1] = 1.0f;
        return Open(Save("impulse.wav", sound, WavFormat::kFloat));
    }
    static void SetGain(HFX fx, float gainDb) {
        BASS_BFX_PEAKEQ band{};
        ASSERT_TRUE(BASS_FXGetParameters(fx, &band));
        band.fGain = gainDb;
        ASSERT_TRUE(BASS_FXSetParameters(fx, &band));
    }
};

TEST_F(FiltersSound, EveryFilterHasTheTextbooksResponse) {
    constexpr int kAll = BASS_BFX_CHANALL;
    const BASS_BFX_BQF cases[] = {
        {BASS_BFX_BQF_LOWPASS, 2000, 0, 0, 0.7071f, 0, kAll},   {BASS_BFX_BQF_HIGHPASS, 300, 0, 0, 0.7071f, 0, kAll},
        {BASS_BFX_BQF_BANDPASS, 1000, 0, 1.5f, 0, 0, kAll},     {BASS_BFX_BQF_BANDPASS_Q, 1000, 0, 0, 3, 0, kAll},
        {BASS_BFX_BQF_NOTCH, 3000, 0, 1, 0, 0, kAll},           {BASS_BFX_BQF_ALLPASS, 1000, 0, 0, 1, 0, kAll},
        {BASS_BFX_BQF_PEAKINGEQ, 1000, 12, 1, 0, 0, kAll},      {BASS_BFX_BQF_PEAKINGEQ, 62, -12, 0, 1.4f, 0, kAll},
        {BASS_BFX_BQF_PEAKINGEQ, 16000, 9, 1, 0, 0, kAll},      {BASS_BFX_BQF_LOWSHELF, 120, 12, 0, 0, 1, kAll},
        {BASS_BFX_BQF_LOWSHELF, 200, -15, 0, 0.7071f, 0, kAll}, {BASS_BFX_BQF_HIGHSHELF, 8000, 12, 0, 0, 0.8f, kAll},
        {BASS_BFX_BQF_HIGHSHELF, 5000, -9, 2, 0, 0, kAll},
    };
    for (const uint32_t rate : {44100u, 48000u}) {
        Reopen(rate);
        for (const BASS_BFX_BQF& filter : cases) {
            SCOPED_TRACE(testing::Message() << rate << " Hz, type " << filter.lFilter << " at " << filter.fCenter);
            const HSTREAM stream = OpenImpulse(rate);
            const HFX fx = BASS_ChannelSetFX(stream, BASS_FX_BFX_BQF, 0);
            ASSERT_TRUE(BASS_FXSetParameters(fx, &filter));
            BASS_ChannelPlay(stream, false);
            const Samples response = Left(Render(rate));
            for (int i = 0; i < 20; i++) {
                const double hz = 20.0 * std::pow(1000.0, i / 19.0);
                const Complex heard = ResponseAt(response, rate, hz), ideal = Textbook(filter, rate, hz);
                // Where next to nothing passes, a tenth of a decibel says nothing.
                if (std::abs(ideal) > 1e-3) {
                    EXPECT_NEAR(Decibels(std::abs(heard / ideal)), 0.0, 0.1) << hz << " Hz";
                }
                EXPECT_LT(std::abs(heard - ideal), 0.011 * std::abs(ideal) + 1e-4) << hz << " Hz";
            }
            BASS_StreamFree(stream);
        }
    }
}

TEST_F(FiltersSound, BandsAtZeroDecibelsLeaveTheSoundAsItIs) {
    const TestSound sound = Noise(kRate, 20000);
    const HSTREAM stream = Play(Save("noise.wav", sound));
    for (int i = 0; i < 12; i++) AddBand(stream, 31.0f * static_cast<float>(1 << (i % 10)), 0.0f);
    ASSERT_EQ(Render(10000), Samples(sound.samples.begin(), sound.samples.begin() + 20000));
    const HFX fx = AddBand(stream, 1000.0f, 6.0f);
    Render(2000);
    SetGain(fx, 0.0f);
    Render(2000);
    ASSERT_EQ(Render(2000), Samples(sound.samples.begin() + 28000, sound.samples.begin() + 32000));
}

// A tone of 0.1 that is 12 dB louder at most: no step may be greater than those of the loudest tone.
TEST_F(FiltersSound, ChangesOfGainDoNotClick) {
    for (const double hz : {80.0, 1000.0, 3000.0}) {
        for (const size_t block : {100u, 480u, 1103u}) {
            SCOPED_TRACE(testing::Message() << hz << " Hz, blocks of " << block);
            const HSTREAM stream = PlayTone(hz);
            const HFX fx = AddBand(stream, static_cast<float>(hz), -12.0f);
            Samples out;
            Append(out, 4000, block);
            for (int i = 0; i < 8; i++) {
                SetGain(fx, i % 2 == 0 ? 12.0f : -12.0f);
                Append(out, 3333, block);
                EXPECT_NEAR(AmplitudeInLast(2205, out, hz), i % 2 == 0 ? 0.398 : 0.0251, 0.01);
            }
            EXPECT_LT(SteepestStep(out), 0.398 * 2 * std::sin(std::numbers::pi * hz / kRate) * 1.02);
            EXPECT_LT(SplatterDb(out, kRate), -100.0);
            Finish(stream);
        }
    }
}

// A slider that is dragged, faster than one change is faded.
TEST_F(FiltersSound, ManyChangesInARowEndWithTheLast) {
    const HSTREAM stream = PlayTone();
    const HFX fx = AddBand(stream, 1000.0f, 0.0f);
    Samples out;
    for (int i = 0; i < 500; i++) {
        SetGain(fx, static_cast<float>(i % 25 - 12));
        Append(out, 97, 97);
    }
    SetGain(fx, 6.0f);
    Append(out, 8820);
    EXPECT_LT(SplatterDb(out, kRate), -100.0);
    EXPECT_NEAR(AmplitudeInLast(4410, out), 0.1995, 0.001);
}

TEST_F(FiltersSound, TheyComeAndGoWithoutAClick) {
    const HSTREAM stream = PlayTone();
    Samples out;
    Append(out, 4410);
    for (int i = 0; i < 6; i++) {
        const HFX fx = AddBand(stream, 1000.0f, 12.0f);
        Append(out, 3000);
        EXPECT_NEAR(AmplitudeInLast(1764, out), 0.398, 0.004);
        EXPECT_TRUE(BASS_ChannelRemoveFX(stream, fx));
        Append(out, 3000);
        EXPECT_NEAR(AmplitudeInLast(1764, out), 0.1, 0.001);
    }
    EXPECT_LT(SplatterDb(out, kRate), -100.0);
}

// Each filter alone stays within the range of numbers.
TEST_F(FiltersSound, ThoseThatLeaveTheRangeOfNumbersSilenceNobodyElse) {
    const HSTREAM stream = PlayTone();
    for (int i = 0; i < 20; i++) AddBand(stream, 1000.0f, 60.0f);
    for (const float sample : Render(kRate)) ASSERT_TRUE(std::isfinite(sample));
    Finish(stream);
    PlayTone();
    EXPECT_NEAR(Peak(Render(kRate)), 0.1f, 1e-6f);
}

TEST_F(FiltersSound, ASeekLeavesNothingInThem) {
    TestSound sound = Tone(kRate, 2, 60.0, 2.0);
    std::fill(sound.samples.begin() + kRate * 2, sound.samples.end(), 0.0f);
    const HSTREAM stream = Play(Save("half.wav", sound));
    const BASS_BFX_BQF ringing = {BASS_BFX_BQF_BANDPASS, 60, 0, 0, 50, 0, BASS_BFX_CHANALL};
    ASSERT_TRUE(BASS_FXSetParameters(BASS_ChannelSetFX(stream, BASS_FX_BFX_BQF, 0), &ringing));
    EXPECT_GT(Peak(Render(kRate / 2)), 0.2f);
    ASSERT_TRUE(SeekToFrame(stream, kRate + 1000));
    Render(kJointFrames);
    EXPECT_EQ(Peak(Render(4410)), 0.0f);
}

// Numbers too small for their usual form cost a hundred times as much.
TEST_F(FiltersSound, SilenceAfterSoundEndsInZeros) {
    const HSTREAM stream = OpenImpulse(kRate);
    for (int i = 0; i < 10; i++) AddBand(stream, 31.25f * static_cast<float>(1 << (i % 10)), 12.0f);
    BASS_ChannelPlay(stream, false);
    const Samples out = Render(kRate);
    for (const float sample : out) ASSERT_NE(std::fpclassify(sample), FP_SUBNORMAL);
    EXPECT_EQ(out.back(), 0.0f);
}

TEST_F(FiltersSound, WhatIsNoFilterIsRefusedAndChangesNothing) {
    const HSTREAM stream = PlayTone();
    const HFX fx = BASS_ChannelSetFX(stream, BASS_FX_BFX_BQF, 0);
    const BASS_BFX_BQF good = {BASS_BFX_BQF_LOWSHELF, 100, 3, 0, 0.7f, 0.5f, BASS_BFX_CHANALL};
    ASSERT_TRUE(BASS_FXSetParameters(fx, &good));
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN(), kInf = std::numeric_limits<float>::infinity();
    const auto refuse = [&](int type, float BASS_BFX_BQF::*field, std::initializer_list<float> values) {
        for (const float value : values) {
            BASS_BFX_BQF bad = good, now{};
            bad.lFilter = type;
            bad.*field = value;
            EXPECT_FALSE(BASS_FXSetParameters(fx, &bad)) << value;
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
            ASSERT_TRUE(BASS_FXGetParameters(fx, &now));
            EXPECT_EQ(std::memcmp(&now, &good, sizeof now), 0);
        }
    };
    refuse(good.lFilter, &BASS_BFX_BQF::fCenter, {kNan, kInf, -kInf, -1.0f, 0.0f, 22050.0f, 1e9f});
    refuse(good.lFilter, &BASS_BFX_BQF::fGain, {kNan, kInf, -kInf, 1000.0f, -61.0f});
    refuse(good.lFilter, &BASS_BFX_BQF::fS, {kNan, kInf, -0.5f, 1.5f});
    refuse(BASS_BFX_BQF_NOTCH, &BASS_BFX_BQF::fQ, {kNan, kInf, -1.0f, 0.0f, 1e6f});
    refuse(BASS_BFX_BQF_NOTCH, &BASS_BFX_BQF::fBandwidth, {kNan, kInf, -1.0f, 30.0f});
    for (const int type : {-1, 9, 1000}) refuse(type, &BASS_BFX_BQF::fQ, {1.0f});
}

}  // namespace hullrider
