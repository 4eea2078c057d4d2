// Outputs in real time.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <thread>

#include "audio/bass.h"
#include "audio/output_choice.h"
#include "tests/eventually.h"
#include "tests/sound/sound.h"

// What the leak checker is not to report: the sound device's library keeps its connection when there is no server.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libpulse";
}

namespace hullrider {

using std::chrono::milliseconds;

namespace {

Samples SamplesOf(const std::string& floatWav) {
    const size_t begin = floatWav.find("data") + 8;
    Samples samples((floatWav.size() - begin) / sizeof(float));
    std::memcpy(samples.data(), floatWav.data() + begin, samples.size() * sizeof(float));
    return samples;
}

}  // namespace

// Longer than is decoded ahead, with pauses of the kind in which the decoders have nothing to do.
TEST(Outputs, TheNullOutputKeepsTimeAndDecodingGoesOnForAsLongAsItPlays) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.wav", WavBytes(Noise(8000, 800000)));
    ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
    std::this_thread::sleep_for(milliseconds(50));
    std::vector<HSTREAM> streams;
    for (int i = 0; i < 3; i++) {
        streams.push_back(BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0));
        std::this_thread::sleep_for(milliseconds(30));
        ASSERT_TRUE(BASS_ChannelPlay(streams.back(), false));
    }
    std::this_thread::sleep_for(milliseconds(3000));
    const auto secondsPlayed = [](HSTREAM stream) {
        return BASS_ChannelBytes2Seconds(stream, BASS_ChannelGetPosition(stream, BASS_POS_BYTE));
    };
    for (const HSTREAM stream : streams) {
        // A busy machine may hold it up for a while, and what was late stays late.
        double passed = 0.0, played = -1.0;
        for (int turn = 0; turn < 30 && std::fabs(played - passed) > 0.15; turn++) {
            const auto begin = std::chrono::steady_clock::now();
            const double before = secondsPlayed(stream);
            std::this_thread::sleep_for(milliseconds(700));
            played = secondsPlayed(stream) - before;
            passed = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        }
        EXPECT_NEAR(played, passed, 0.15);
    }
    EXPECT_TRUE(BASS_Free());
}

TEST(Outputs, ARecordingThatEndsInMidWaveFallsSilent) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.wav", WavBytes(Constant(44100, 441000, 0.5f), WavFormat::kFloat));
    ChooseOutput({OutputKind::kWav, folder.At("out.wav")});
    ASSERT_TRUE(BASS_Init(-1, 44100, 0, nullptr, nullptr));
    const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0);
    ASSERT_TRUE(BASS_ChannelPlay(stream, false));
    EXPECT_TRUE(Eventually([&] { return BASS_ChannelGetPosition(stream, BASS_POS_BYTE) > 300'000; }));
    EXPECT_TRUE(BASS_Free());
    ChooseOutput({});

    const Samples samples = SamplesOf(folder.Read("out.wav"));
    ASSERT_GT(samples.size(), 8000u);
    EXPECT_EQ(samples.back(), 0.0f);
    for (size_t i = samples.size() - 8000; i < samples.size(); i++) {
        ASSERT_LT(std::fabs(samples[i] - samples[i - 2]), 0.01f) << i;
    }
}

}  // namespace hullrider
