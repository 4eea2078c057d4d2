// What the tests of filters and of procedures share.
#pragma once

#include "tests/sound/sound.h"

namespace hullrider {

inline constexpr BASS_BFX_PEAKEQ kFlatBand = {0, 1.0f, 0.0f, 1000.0f, 0.0f, BASS_BFX_CHANALL};

class EffectsSound : public SoundTest {
protected:
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
    static void Append(Samples& out, size_t frames, size_t blockFrames = 480) {
        hullrider::Append(out, Render(frames, blockFrames));
    }
    // Of a tone, in the last frames.
    static double AmplitudeInLast(size_t frames, const Samples& out, double hz = 1000.0) {
        return AmplitudeAt(Left(Part(out, out.size() - frames * 2, frames * 2)), kRate, hz);
    }
};

}  // namespace hullrider
