// Where sound begins in mid-wave or breaks off: a constant of 1 shows every step.
#include <chrono>
#include <cmath>

#include "audio/channel.h"
#include "audio/mixer.h"
#include "tests/sound/sound.h"

namespace hullrider {

namespace {

// What rises or falls takes five milliseconds, what there is no more of half a millisecond.
constexpr double kSteepestRamp = 0.007, kSteepestFall = 0.046;

void ExpectNoStep(const Samples& stereo, double steepestFall) {
    for (size_t i = 2; i < stereo.size(); i++) {
        const double step = static_cast<double>(stereo[i] - stereo[i - 2]);
        ASSERT_LT(step, kSteepestRamp) << "frame " << i / 2;
        ASSERT_GT(step, -steepestFall) << "frame " << i / 2;
    }
}

// Ones, of which only so many are there as yet.
class Scarce : public Source {
public:
    explicit Scarce(size_t& there) : there_(there) {}
    SourceFormat Format() const override { return {44100, 2, BASS_CTYPE_STREAM}; }
    int64_t Length() const override { return 1'000'000; }
    int64_t LoopLength() const override { return 0; }
    SourceRead Read(float* out, size_t frames) override {
        const size_t now = std::min(frames, there_);
        std::fill_n(out, now * kStereo, 1.0f);
        there_ -= now;
        return {now, false};
    }
    bool Seek(int64_t) override { return true; }

private:
    size_t& there_;
};

}  // namespace

class JointsSound : public SoundTest {
protected:
    HSTREAM OpenOnes() { return Open(Save("ones.wav", Constant(kRate, kRate, 1.0f), WavFormat::kFloat)); }
};

TEST_F(JointsSound, WhatBeginsInMidWaveRisesAndWhatIsStoppedFalls) {
    const auto cutOff = [](HSTREAM stream) { return BASS_ChannelStop(stream) && BASS_StreamFree(stream); };
    for (const size_t block : {1u, 100u, 480u, 2000u}) {
        SCOPED_TRACE(block);
        Samples out(2, 0.0f);
        HSTREAM stream = 0;
        for (bool (*stop)(HSTREAM) : {BASS_ChannelPause, BASS_ChannelStop, BASS_StreamFree, +cutOff}) {
            stream = BASS_ChannelIsActive(stream) == BASS_ACTIVE_STOPPED ? OpenOnes() : stream;
            SeekToFrame(stream, 1000);
            BASS_ChannelPlay(stream, false);
            Append(out, Render(1000, block));
            EXPECT_EQ(out.back(), 1.0f);
            EXPECT_TRUE(stop(stream));
            BASS_ChannelPlay(stream, false);  // a moment too late, or just in time
            EXPECT_TRUE(stop(stream) || BASS_ErrorGetCode() == BASS_ERROR_HANDLE);
            Append(out, Render(1000, block));
            EXPECT_EQ(out.back(), 0.0f);
        }
        ExpectNoStep(out, kSteepestRamp);
    }
}

TEST_F(JointsSound, PausedAndGoneOnWithAnywhereInTheRampsItIsNoStep) {
    const HSTREAM stream = OpenOnes();
    BASS_ChannelPlay(stream, false);
    Samples out = Render(1000);
    for (size_t frames = 10; frames < 250; frames += 30) {
        EXPECT_TRUE(BASS_ChannelPause(stream));
        Append(out, Render(frames, 10));
        BASS_ChannelPlay(stream, false);
        Append(out, Render(frames * 7 % 250, 10));
    }
    ExpectNoStep(out, kSteepestFall);
}

TEST_F(JointsSound, ASeekWhilePlayingIsNoStep) {
    const HSTREAM stream = OpenOnes();
    BASS_ChannelPlay(stream, false);
    Samples out = Render(1000);
    EXPECT_EQ(out[0], 1.0f);
    for (const size_t block : {1u, 100u, 480u, 2000u}) {
        SeekToFrame(stream, 20000);
        Append(out, Render(1000, block));
        EXPECT_EQ(out.back(), 1.0f);
    }
    ExpectNoStep(out, kSteepestFall);
}

TEST_F(JointsSound, WhatWasMissingComesBackWithoutAStep) {
    size_t there = 1000;
    const auto channel = std::make_shared<Channel>(std::make_unique<Scarce>(there), SourceRequest{"", kRate, false}, 0);
    Mixer mixer(kRate, false);
    ASSERT_TRUE(mixer.Add(channel));
    channel->Play(false);
    Samples out;
    for (int i = 0; i < 20; i++) {
        if (i == 7) there = 100000;
        channel->DecodeAhead(std::chrono::steady_clock::now());
        Samples block(480 * 2);
        mixer.Render(block.data(), 480);
        Append(out, block);
        if (i == 5) {
            EXPECT_EQ(block.back(), 0.0f);
        }
    }
    EXPECT_EQ(out.front(), 1.0f);
    EXPECT_EQ(out.back(), 1.0f);
    ExpectNoStep(out, kSteepestFall);
}

}  // namespace hullrider
