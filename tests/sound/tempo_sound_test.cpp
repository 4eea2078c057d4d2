// Tempo streams, by tones and by a sweep whose pitch tells the time.
#include <cmath>

#include "tests/sound/sound.h"

namespace hullrider {

class TempoSound : public SoundTest {
protected:
    static constexpr double kSweepFrom = 300.0, kSweepPerSec = 40.0;  // Hz

    HSTREAM PlayTempo(const TestSound& sound, float percent) {
        source_ = Open(Save("book.wav", sound), BASS_SAMPLE_FLOAT | BASS_STREAM_DECODE);
        const HSTREAM stream = BASS_FX_TempoCreate(source_, BASS_FX_FREESOURCE);
        EXPECT_NE(stream, 0u) << BASS_ErrorGetCode();
        EXPECT_TRUE(BASS_ChannelSetAttribute(stream, BASS_ATTRIB_TEMPO, percent));
        EXPECT_TRUE(SeekToFrame(stream, 0));  // the first moment may have been decoded already
        EXPECT_TRUE(BASS_ChannelPlay(stream, false));
        return stream;
    }
    // Renders a moment, and checks that the place told in its middle is the place heard.
    static void ExpectPlace(HSTREAM stream, const char* when) {
        const double before = PositionSec(stream);
        const double hz = FrequencyOf(Left(Render(kRate / 10)), kRate);
        EXPECT_NEAR((before + PositionSec(stream)) / 2.0, (hz - kSweepFrom) / kSweepPerSec, 0.1) << when;
    }

    HSTREAM source_ = 0;
};

TEST_F(TempoSound, TheTempoChangesTheTimeAndNotThePitch) {
    for (const float percent : {-50.0f, -20.0f, 0.0f, 30.0f, 100.0f, 200.0f}) {
        SCOPED_TRACE(percent);
        const HSTREAM stream = PlayTempo(Tone(kRate, 2, 440.0, 6.0), percent);
        EXPECT_NEAR(LengthSec(stream), 6.0, 1e-3);
        const double seconds = 6.0 / (1.0 + static_cast<double>(percent) / 100.0);
        const Samples heard = Render(static_cast<size_t>((seconds - 0.06) * kRate));
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PLAYING);
        const Samples middle = Left(Part(heard, kRate, heard.size() - 2 * kRate));
        EXPECT_NEAR(FrequencyOf(middle, kRate), 440.0, 1.0);
        EXPECT_NEAR(Rms(middle), 0.3535, 0.02);
        EXPECT_NEAR(PositionSec(stream), 6.0 - 0.06 * 6.0 / seconds, 0.05);
        Render(kRate / 8);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
        BASS_StreamFree(stream);
    }
}

TEST_F(TempoSound, AtItsOwnTempoItIsTheFileItself) {
    const TestSound noise = Noise(kRate, kRate);
    PlayTempo(noise, 0.0f);
    const Samples heard = Render(kRate / 2);
    EXPECT_TRUE(std::equal(heard.begin(), heard.end(), noise.samples.begin()));
}

TEST_F(TempoSound, ThePlaceIsTheOneHeardAtAnyTempoAndAcrossChangesAndSeeks) {
    const HSTREAM stream = PlayTempo(Sweep(kRate, 40.0, kSweepFrom, kSweepPerSec), 0.0f);
    ExpectPlace(stream, "at its own tempo");
    for (const float percent : {50.0f, 200.0f, -50.0f, 0.0f, 100.0f}) {
        SCOPED_TRACE(percent);
        ASSERT_TRUE(BASS_ChannelSetAttribute(stream, BASS_ATTRIB_TEMPO, percent));
        for (int i = 0; i < 4; i++) ExpectPlace(stream, "right after the change");
        Render(kRate);
        ExpectPlace(stream, "later");
        ASSERT_TRUE(SeekToFrame(stream, kRate * 20));
        Render(300);  // while it rises
        ExpectPlace(stream, "right after a seek");
        Render(kRate);
        ExpectPlace(stream, "after a seek");
    }
}

TEST_F(TempoSound, AChangeIsHeardSoonWithoutClickOrGap) {
    const HSTREAM stream = PlayTempo(Tone(kRate, 2, 440.0, 30.0), 0.0f);
    float last = 0.0f;
    for (const float percent : {100.0f, -50.0f, 0.0f, 200.0f}) {
        SCOPED_TRACE(percent);
        Render(kRate);
        last = Left(Render(480)).back();
        ASSERT_TRUE(BASS_ChannelSetAttribute(stream, BASS_ATTRIB_TEMPO, percent));
        const Samples change = Left(Render(kRate * 3 / 10));
        for (size_t i = 0; i < change.size(); i++) {
            ASSERT_LT(std::fabs(change[i] - (i == 0 ? last : change[i - 1])), 0.06f) << i;  // of the tone: 0.031
        }
        for (size_t i = 0; i + 441 <= change.size(); i += 441) {
            EXPECT_GT(Peak(Part(change, i, 441)), 0.3f);
        }
        const double before = PositionSec(stream);
        Render(kRate / 2);
        EXPECT_NEAR(PositionSec(stream) - before, 0.5 * (1.0 + static_cast<double>(percent) / 100.0), 0.03);
    }
}

TEST_F(TempoSound, ItsSourceGoesWithItAndPlaysOnWhereItIsFreedFirst) {
    const HSTREAM stream = PlayTempo(Tone(kRate, 1, 440.0, 20.0), 100.0f);
    EXPECT_EQ(BASS_FX_TempoCreate(source_, 0), 0u);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ALREADY);
    EXPECT_TRUE(BASS_StreamFree(source_));
    Render(kRate);  // what was decoded before
    EXPECT_GT(Peak(Render(kRate / 10)), 0.3f);
    EXPECT_TRUE(BASS_StreamFree(stream));
    const HSTREAM other = PlayTempo(Tone(kRate, 1, 440.0, 20.0), 0.0f);
    EXPECT_TRUE(BASS_StreamFree(other));
    EXPECT_FALSE(BASS_StreamFree(source_));
}

}  // namespace hullrider
