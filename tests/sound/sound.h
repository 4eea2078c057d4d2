// What the sound tests share: rendering without real time, test signals, and WAV files to play them from.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "audio/bass.h"
#include "audio/manual_output.h"
#include "tests/temporary_folder.h"

namespace hullrider {

using Samples = std::vector<float>;

// Interleaved sound of a file.
struct TestSound {
    uint32_t rate = 44100;
    uint32_t channels = 2;
    Samples samples;
};

// The same tone in every channel.
TestSound Tone(uint32_t rate, uint32_t channels, double hz, double seconds, double amplitude = 0.5);
// One value in every channel.
TestSound Constant(uint32_t rate, size_t frames, float value);
// Stereo noise in which every place is unlike any other; each sample a whole number of 1/32768.
TestSound Noise(uint32_t rate, size_t frames, unsigned seed = 7);
// A tone that rises steadily, so that its pitch tells the time; each sample a whole number of 1/32768.
TestSound Sweep(uint32_t rate, double seconds, double fromHz, double hzPerSec);

enum class WavFormat { kPcm8, kPcm16, kPcm24, kFloat };
std::string WavBytes(const TestSound& sound, WavFormat format = WavFormat::kPcm16);

// The left channel of stereo samples.
Samples Left(const Samples& stereo);
// The frequency of a steady tone, by its zero crossings.
double FrequencyOf(const Samples& mono, uint32_t rate);
// Half the height of a tone of that frequency in there.
double AmplitudeAt(const Samples& mono, uint32_t rate, double hz);
double Rms(const Samples& samples);
float Peak(const Samples& samples);
double Decibels(double ratio);
// The greatest step from one frame of stereo samples to the next.
double SteepestStep(const Samples& stereo);
void Append(Samples& out, const Samples& more);
// So many of the samples, `from` the first of them.
Samples Part(const Samples& samples, size_t from, size_t count);

// The library on an output without time, at 44100 Hz if a test asks for nothing else.
class SoundTest : public testing::Test {
protected:
    static constexpr uint32_t kRate = 44100;
    // Within so many frames a sound that begins in mid-wave has risen, and one that broke off has died away.
    static constexpr size_t kJointFrames = 300;

    void SetUp() override { ASSERT_TRUE(InitManualOutput(kRate)); }
    void TearDown() override { BASS_Free(); }
    void Reopen(uint32_t rate) {
        BASS_Free();
        ASSERT_TRUE(InitManualOutput(rate));
    }

    // The next stereo frames.
    static Samples Render(size_t frames, size_t blockFrames = 480);

    std::string Save(const std::string& name, const TestSound& sound, WavFormat format = WavFormat::kPcm16) {
        return folder_.Write(name, WavBytes(sound, format));
    }
    static HSTREAM Open(const std::string& path, uint32_t flags = BASS_SAMPLE_FLOAT) {
        return BASS_StreamCreateFile(false, path.c_str(), 0, 0, flags);
    }
    // Creates a stream and plays it.
    static HSTREAM Play(const std::string& path, uint32_t flags = BASS_SAMPLE_FLOAT) {
        const HSTREAM stream = Open(path, flags);
        EXPECT_NE(stream, 0u) << path << ": " << BASS_ErrorGetCode();
        EXPECT_TRUE(BASS_ChannelPlay(stream, false));
        return stream;
    }
    // Frees a stream and lets what is left of it die away.
    static void Finish(HSTREAM stream);
    static bool SeekToFrame(uint32_t channel, int64_t frame);
    static double PositionSec(uint32_t channel);
    static double LengthSec(uint32_t channel);

    // A MIDI file of one track in which a tick is a millisecond, and a SoundFont for a stream, or for all to come.
    std::string SaveMidi(const std::string& track) const;
    static bool UseFont(HSTREAM stream, HSOUNDFONT font);

    TemporaryFolder folder_;
};

}  // namespace hullrider
