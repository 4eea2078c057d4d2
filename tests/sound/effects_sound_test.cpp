// Filters and procedures as they sound.
#include <array>
#include <cmath>
#include <complex>
#include <cstring>
#include <limits>
#include <numbers>

#include "tests/sound/sound.h"

namespace hullrider {

namespace {

using Complex = std::complex<double>;

constexpr BASS_BFX_PEAKEQ kFlatBand = {0, 1.0f, 0.0f, 1000.0f, 0.0f, BASS_BFX_CHANALL};

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

// Times and plus what the user's two numbers say.
void Change(HDSP, uint32_t, void* buffer, uint32_t length, void* user) {
    const auto& [factor, offset] = *static_cast<const std::pair<float, float>*>(user);
    for (float* sample = static_cast<float*>(buffer); length > 0; length -= 4, sample++) {
        *sample = *sample * factor + offset;
    }
}

std::pair<float, float> negate{-1.0f, 0.0f}, twice{2.0f, 0.0f}, addOne{1.0f, 1.0f};

}  // namespace

class EffectsSound : public SoundTest {
protected:
    HSTREAM OpenImpulse(uint32_t rate) {
        TestSound sound = Constant(rate, rate, 0.0f);
        sound.samples[0] = sound.samples[1] = 1.0f;
        return Open(Save("impulse.wav", sound, WavFormat::kFloat));
    }
    HSTREAM PlayTone(double hz = 1000.0, uint32_t channels = 2) {
        return Play(Save("tone.wav", Tone(kRate, channels, hz, 1.0, 0.1), WavFormat::kFloat), BASS_SAMPLE_LOOP);
    }
    static HFX AddBand(uint32_t channel, float hz, float gainDb) {
        BASS_BFX_PEAKEQ band = kFlatBand;
        band.fCenter = hz;
        band.fGain = gainDb;
        const HFX fx = BASS_ChannelSetFX(channel, BASS_FX_BFX_PEAKEQ, 0);
        EXPECT_TRUE(BASS_FXSetParameters(fx, &band));
        return fx;
    }
    static void SetGain(HFX fx, float gainDb) {
        BASS_BFX_PEAKEQ band{};
        ASSERT_TRUE(BASS_FXGetParameters(fx, &band));
        band.fGain = gainDb;
        ASSERT_TRUE(BASS_FXSetParameters(fx, &band));
    }
    static void Append(Samples& out, size_t frames, size_t blockFrames = 480) {
        const Samples more = Render(frames, blockFrames);
        out.insert(out.end(), more.begin(), more.end());
    }
    // Of a tone, in the last frames.
    static double AmplitudeInLast(size_t frames, const Samples& out, double hz = 1000.0) {
        return AmplitudeAt(Left(Part(out, out.size() - frames * 2, frames * 2)), kRate, hz);
    }
};

TEST_F(EffectsSound, EveryFilterHasTheTextbooksResponse) {
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

TEST_F(EffectsSound, BandsAtZeroDecibelsLeaveTheSoundAsItIs) {
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
TEST_F(EffectsSound, ChangesOfGainDoNotClick) {
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
TEST_F(EffectsSound, ManyChangesInARowEndWithTheLast) {
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

TEST_F(EffectsSound, FiltersComeAndGoWithoutAClickAndProceduresWithoutAStep) {
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

    out.clear();
    Append(out, 4410);
    for (int i = 0; i < 6; i++) {
        const HDSP dsp = BASS_ChannelSetDSP(stream, Change, &negate, 0);
        Append(out, 3011);
        EXPECT_TRUE(BASS_ChannelRemoveDSP(stream, dsp));
        Append(out, 3011);
    }
    // The tone's own steps, and what dies away on top of it.
    EXPECT_LT(SteepestStep(out), 0.0143 + 0.2 * 1.5 / 441);
}

TEST_F(EffectsSound, EffectsRunByPriorityThenInTheirOrderAndBeforeLevelAndVolume) {
    const HSTREAM stream = Open(Save("half.wav", Constant(kRate, kRate, 0.0625f), WavFormat::kFloat));
    BASS_ChannelSetDSP(stream, Change, &addOne, -5);
    BASS_ChannelSetDSP(stream, Change, &negate, 7);
    BASS_ChannelSetDSP(stream, Change, &twice, -5);
    BASS_ChannelSetDSP(stream, Change, &twice, 7);
    const HFX fx = BASS_ChannelSetFX(stream, BASS_FX_BFX_BQF, 100);
    const BASS_BFX_BQF halve = {BASS_BFX_BQF_LOWSHELF, 20000, -6.0206f, 0, 0, 1, BASS_BFX_CHANALL};
    ASSERT_TRUE(BASS_FXSetParameters(fx, &halve));
    BASS_ChannelSetAttribute(stream, BASS_ATTRIB_VOL, 0.25f);
    BASS_ChannelPlay(stream, false);
    const float expected = (0.03125f * -2.0f + 1.0f) * 2.0f;
    EXPECT_NEAR(Render(1000).back(), expected * 0.25f, 1e-5f);
    EXPECT_EQ(BASS_ChannelGetLevel(stream), 0x80008000u);
}

TEST_F(EffectsSound, ProceduresGetTheChannelsOwnLayout) {
    struct Seen {
        HDSP dsp = 0;
        uint32_t channel = 0;
        size_t samples = 0;
    };
    const auto look = [](HDSP dsp, uint32_t channel, void* buffer, uint32_t length, void* user) {
        Seen& seen = *static_cast<Seen*>(user);
        seen = {dsp, channel, seen.samples + length / 4};
        for (size_t i = 0; i < length / 4; i += 2) static_cast<float*>(buffer)[i] = 0.0f;
    };
    for (const uint32_t channels : {1u, 2u, 6u}) {
        SCOPED_TRACE(channels);
        const TestSound sound = Tone(kRate, channels, 500.0, 1.0);
        const HSTREAM stream = Open(Save("tone.wav", sound, WavFormat::kFloat));
        BASS_CHANNELINFO info{};
        BASS_ChannelGetInfo(stream, &info);
        EXPECT_EQ(info.chans, std::min(channels, 2u));
        EXPECT_EQ(BASS_ChannelGetLength(stream, BASS_POS_BYTE), kRate * 4u * info.chans);
        Seen seen;
        const HDSP dsp = BASS_ChannelSetDSP(stream, look, &seen, 0);
        BASS_ChannelPlay(stream, false);
        const Samples out = Render(100, 100);
        EXPECT_EQ(seen.samples, 100u * info.chans);
        EXPECT_EQ(seen.dsp, dsp);
        EXPECT_EQ(seen.channel, stream);
        // Every other sample was taken away: of one channel every other frame, of two the left side.
        for (size_t i = 0; i < 100; i++) {
            const float left = channels == 1 && i % 2 == 1 ? sound.samples[i] : 0.0f;
            ASSERT_EQ(out[i * 2], left) << i;
            if (channels > 2) continue;
            ASSERT_EQ(out[i * 2 + 1], channels == 2 ? sound.samples[i * 2 + 1] : left) << i;
        }
        EXPECT_TRUE(BASS_ChannelRemoveDSP(stream, dsp));
        Render(100);
        EXPECT_EQ(seen.samples, 100u * info.chans);
        Finish(stream);
    }
}

TEST_F(EffectsSound, WhatAProcedureBreaksIsGoneWithIt) {
    const auto spoil = [](HDSP, uint32_t, void* buffer, uint32_t, void*) {
        static_cast<float*>(buffer)[0] = std::numeric_limits<float>::quiet_NaN();
        static_cast<float*>(buffer)[1] = std::numeric_limits<float>::infinity();
    };
    const HSTREAM stream = PlayTone();
    AddBand(stream, 1000.0f, 6.0206f);
    const HDSP dsp = BASS_ChannelSetDSP(stream, spoil, nullptr, 10);
    Render(4410);
    EXPECT_TRUE(BASS_ChannelRemoveDSP(stream, dsp));
    Render(4410);
    EXPECT_NEAR(AmplitudeAt(Left(Render(4410)), kRate, 1000.0), 0.2, 0.002);
}

// Each filter alone stays within the range of numbers.
TEST_F(EffectsSound, FiltersThatLeaveTheRangeOfNumbersSilenceNobodyElse) {
    const HSTREAM stream = PlayTone();
    for (int i = 0; i < 20; i++) AddBand(stream, 1000.0f, 60.0f);
    for (const float sample : Render(kRate)) ASSERT_TRUE(std::isfinite(sample));
    Finish(stream);
    PlayTone();
    EXPECT_NEAR(Peak(Render(kRate)), 0.1f, 1e-6f);
}

TEST_F(EffectsSound, ASeekLeavesNothingInTheFilters) {
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
TEST_F(EffectsSound, SilenceAfterSoundEndsInZeros) {
    const HSTREAM stream = OpenImpulse(kRate);
    for (int i = 0; i < 10; i++) AddBand(stream, 31.25f * static_cast<float>(1 << (i % 10)), 12.0f);
    BASS_ChannelPlay(stream, false);
    const Samples out = Render(kRate);
    for (const float sample : out) ASSERT_NE(std::fpclassify(sample), FP_SUBNORMAL);
    EXPECT_EQ(out.back(), 0.0f);
}

TEST_F(EffectsSound, WhatIsNoFilterIsRefusedAndChangesNothing) {
    const HSTREAM stream = PlayTone();
    const HFX bqf = BASS_ChannelSetFX(stream, BASS_FX_BFX_BQF, 0), peak = AddBand(stream, 1000.0f, 6.0f);
    const BASS_BFX_BQF good = {BASS_BFX_BQF_LOWSHELF, 100, 3, 0, 0.7f, 0.5f, BASS_BFX_CHANALL};
    ASSERT_TRUE(BASS_FXSetParameters(bqf, &good));
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN(), kInf = std::numeric_limits<float>::infinity();
    const auto refuse = [&](int type, float BASS_BFX_BQF::*field, std::initializer_list<float> values) {
        for (const float value : values) {
            BASS_BFX_BQF bad = good, now{};
            bad.lFilter = type;
            bad.*field = value;
            EXPECT_FALSE(BASS_FXSetParameters(bqf, &bad)) << value;
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
            ASSERT_TRUE(BASS_FXGetParameters(bqf, &now));
            EXPECT_EQ(std::memcmp(&now, &good, sizeof now), 0);
        }
    };
    refuse(good.lFilter, &BASS_BFX_BQF::fCenter, {kNan, kInf, -kInf, -1.0f, 0.0f, 22050.0f, 1e9f});
    refuse(good.lFilter, &BASS_BFX_BQF::fGain, {kNan, kInf, -kInf, 1000.0f, -61.0f});
    refuse(good.lFilter, &BASS_BFX_BQF::fS, {kNan, kInf, -0.5f, 1.5f});
    refuse(BASS_BFX_BQF_NOTCH, &BASS_BFX_BQF::fQ, {kNan, kInf, -1.0f, 0.0f, 1e6f});
    refuse(BASS_BFX_BQF_NOTCH, &BASS_BFX_BQF::fBandwidth, {kNan, kInf, -1.0f, 30.0f});
    for (const int type : {-1, 9, 1000}) refuse(type, &BASS_BFX_BQF::fQ, {1.0f});
    for (const int channel : {0, 1, -2}) {
        BASS_BFX_BQF bad = good;
        bad.lChannel = channel;
        EXPECT_FALSE(BASS_FXSetParameters(bqf, &bad)) << channel;
    }
    EXPECT_FALSE(BASS_FXSetParameters(bqf, nullptr));
    EXPECT_FALSE(BASS_FXGetParameters(bqf, nullptr));

    BASS_BFX_PEAKEQ band = kFlatBand, now{};
    band.lBand = 3;
    band.fGain = -4.5f;
    ASSERT_TRUE(BASS_FXSetParameters(peak, &band));
    band.fBandwidth = 0.0f;
    EXPECT_FALSE(BASS_FXSetParameters(peak, &band));
    ASSERT_TRUE(BASS_FXGetParameters(peak, &now));
    EXPECT_TRUE(now.lBand == 3 && now.fGain == -4.5f && now.fBandwidth == 1.0f);
}

TEST_F(EffectsSound, DeadAndWrongHandlesAreRefused) {
    const HSTREAM stream = PlayTone(), other = PlayTone();
    const HFX fx = BASS_ChannelSetFX(stream, BASS_FX_BFX_PEAKEQ, 0);
    const HDSP dsp = BASS_ChannelSetDSP(stream, Change, &negate, 0);
    BASS_BFX_PEAKEQ band = kFlatBand;
    const auto refused = [](bool success) { return !success && BASS_ErrorGetCode() == BASS_ERROR_HANDLE; };
    EXPECT_TRUE(refused(BASS_ChannelRemoveFX(other, fx)));
    EXPECT_TRUE(refused(BASS_ChannelRemoveFX(stream, dsp)));
    EXPECT_TRUE(refused(BASS_ChannelRemoveDSP(stream, fx)));
    EXPECT_TRUE(refused(BASS_FXSetParameters(dsp, &band)));
    EXPECT_TRUE(refused(BASS_FXGetParameters(0, &band)));
    EXPECT_EQ(BASS_ChannelSetFX(stream, 0x10005, 0), 0u);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLTYPE);
    EXPECT_EQ(BASS_ChannelSetDSP(stream, nullptr, nullptr, 0), 0u);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
    EXPECT_TRUE(BASS_ChannelRemoveFX(stream, fx));
    EXPECT_TRUE(refused(BASS_ChannelRemoveFX(stream, fx)));
    EXPECT_TRUE(refused(BASS_FXSetParameters(fx, &band)));
    EXPECT_TRUE(BASS_ChannelRemoveDSP(stream, dsp));
    EXPECT_TRUE(refused(BASS_ChannelRemoveDSP(stream, dsp)));

    const HFX withChannel = BASS_ChannelSetFX(stream, BASS_FX_BFX_PEAKEQ, 0);
    BASS_StreamFree(stream);
    EXPECT_TRUE(refused(BASS_FXSetParameters(withChannel, &band)));
}

}  // namespace hullrider
