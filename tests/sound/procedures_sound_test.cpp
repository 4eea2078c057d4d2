// Procedures of callers as they sound.
#include <limits>

#include "tests/sound/effects.h"

namespace hullrider {

namespace {

// Times and plus what the user's two numbers say.
void Change(HDSP, uint32_t, void* buffer, uint32_t length, void* user) {
    const auto& [factor, offset] = *static_cast<const std::pair<float, float>*>(user);
    for (float* sample = static_cast<float*>(buffer); length > 0; length -= 4, sample++) {
        *sample = *sample * factor + offset;
    }
}

std::pair<float, float> negate{-1.0f, 0.0f}, twice{2.0f, 0.0f}, addOne{1.0f, 1.0f};

}  // namespace

class ProceduresSound : public EffectsSound {};

TEST_F(ProceduresSound, TheyComeAndGoWithoutAStep) {
    const HSTREAM stream = PlayTone();
    Samples out;
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

TEST_F(ProceduresSound, EffectsRunByPriorityThenInTheirOrderAndBeforeLevelAndVolume) {
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

TEST_F(ProceduresSound, TheyGetTheChannelsOwnLayout) {
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
        const uint32_t heard = std::min(channels, 2u);
        EXPECT_EQ(BASS_ChannelGetLength(stream, BASS_POS_BYTE), kRate * 4u * heard);
        Seen seen;
        const HDSP dsp = BASS_ChannelSetDSP(stream, look, &seen, 0);
        BASS_ChannelPlay(stream, false);
        const Samples out = Render(100, 100);
        EXPECT_EQ(seen.samples, 100u * heard);
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
        EXPECT_EQ(seen.samples, 100u * heard);
        Finish(stream);
    }
}

TEST_F(ProceduresSound, WhatAProcedureBreaksIsGoneWithIt) {
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

}  // namespace hullrider
