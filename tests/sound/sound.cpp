#include "tests/sound/sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "tests/audio/midi_bytes.h"

namespace hullrider {

namespace {

std::string SampleBytes(float value, WavFormat format) {
    if (format == WavFormat::kFloat) return {reinterpret_cast<const char*>(&value), 4};
    constexpr double kFull[] = {127.0, 32768.0, 8388608.0};
    const int bytes = static_cast<int>(format) + 1;
    const long long number = std::llround(static_cast<double>(value) * kFull[bytes - 1]);
    return LittleEndian(static_cast<uint64_t>(bytes == 1 ? number + 128 : number), bytes);
}

}  // namespace

TestSound Tone(uint32_t rate, uint32_t channels, double hz, double seconds, double amplitude) {
    TestSound sound{rate, channels, {}};
    const auto frames = static_cast<size_t>(seconds * rate);
    for (size_t i = 0; i < frames; i++) {
        const double phase = 2.0 * std::numbers::pi * hz * static_cast<double>(i) / rate;
        sound.samples.insert(sound.samples.end(), channels, static_cast<float>(amplitude * std::sin(phase)));
    }
    return sound;
}

TestSound Constant(uint32_t rate, size_t frames, float value) {
    return {rate, 2, Samples(frames * 2, value)};
}

TestSound Noise(uint32_t rate, size_t frames, unsigned seed) {
    TestSound sound{rate, 2, {}};
    std::minstd_rand random(seed);
    for (size_t i = 0; i < frames * 2; i++) {
        sound.samples.push_back(static_cast<float>(static_cast<int>(random() % 40000) - 20000) / 32768.0f);
    }
    return sound;
}

TestSound Sweep(uint32_t rate, double seconds, double fromHz, double hzPerSec) {
    TestSound sound{rate, 2, {}};
    const auto frames = static_cast<size_t>(seconds * rate);
    for (size_t i = 0; i < frames; i++) {
        const double t = static_cast<double>(i) / rate;
        const double turns = fromHz * t + hzPerSec * t * t / 2.0;
        const double value = std::round(16384.0 * std::sin(2.0 * std::numbers::pi * turns)) / 32768.0;
        sound.samples.insert(sound.samples.end(), 2, static_cast<float>(value));
    }
    return sound;
}

std::string WavBytes(const TestSound& sound, WavFormat format) {
    std::string data;
    for (const float sample : sound.samples) data += SampleBytes(sample, format);
    const int kind = format == WavFormat::kFloat ? 3 : 1;
    return WavFile(kind, sound.rate, sound.channels, static_cast<uint32_t>(format) + 1, data);
}

Samples Left(const Samples& stereo) {
    Samples left;
    for (size_t i = 0; i < stereo.size(); i += 2) left.push_back(stereo[i]);
    return left;
}

double FrequencyOf(const Samples& mono, uint32_t rate) {
    double first = -1.0, last = -1.0;
    int periods = -1;
    for (size_t i = 1; i < mono.size(); i++) {
        if (!(mono[i - 1] < 0.0f && mono[i] >= 0.0f)) continue;
        const double fall = static_cast<double>(mono[i - 1]) / static_cast<double>(mono[i - 1] - mono[i]);
        last = static_cast<double>(i - 1) + fall;
        if (first < 0.0) first = last;
        periods++;
    }
    return periods < 1 ? 0.0 : periods * static_cast<double>(rate) / (last - first);
}

double AmplitudeAt(const Samples& mono, uint32_t rate, double hz) {
    double real = 0.0, imaginary = 0.0;
    for (size_t i = 0; i < mono.size(); i++) {
        const double phase = 2.0 * std::numbers::pi * hz * static_cast<double>(i) / rate;
        real += static_cast<double>(mono[i]) * std::cos(phase);
        imaginary += static_cast<double>(mono[i]) * std::sin(phase);
    }
    return 2.0 * std::hypot(real, imaginary) / static_cast<double>(mono.size());
}

double Rms(const Samples& samples) {
    double sum = 0.0;
    for (const float sample : samples) sum += static_cast<double>(sample) * static_cast<double>(sample);
    return samples.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(samples.size()));
}

float Peak(const Samples& samples) {
    float peak = 0.0f;
    for (const float sample : samples) peak = std::max(peak, std::fabs(sample));
    return peak;
}

double Decibels(double ratio) {
    return 20.0 * std::log10(std::max(ratio, 1e-9));
}

double SteepestStep(const Samples& stereo) {
    double worst = 0.0;
    for (size_t i = 2; i < stereo.size(); i++) {
        worst = std::max(worst, std::fabs(static_cast<double>(stereo[i] - stereo[i - 2])));
    }
    return worst;
}

void Append(Samples& out, const Samples& more) {
    out.insert(out.end(), more.begin(), more.end());
}

Samples Part(const Samples& samples, size_t from, size_t count) {
    const auto first = samples.begin() + static_cast<ptrdiff_t>(from);
    return {first, first + static_cast<ptrdiff_t>(count)};
}

Samples SoundTest::Render(size_t frames, size_t blockFrames) {
    Samples out(frames * 2);
    EXPECT_TRUE(RenderManually(out.data(), frames, blockFrames));
    return out;
}

void SoundTest::Finish(HSTREAM stream) {
    EXPECT_TRUE(BASS_StreamFree(stream));
    Render(1000);
}

bool SoundTest::SeekToFrame(uint32_t channel, int64_t frame) {
    BASS_CHANNELINFO info{};
    BASS_ChannelGetInfo(channel, &info);
    return BASS_ChannelSetPosition(channel, static_cast<uint64_t>(frame) * 4 * info.chans, BASS_POS_BYTE);
}

double SoundTest::PositionSec(uint32_t channel) {
    return BASS_ChannelBytes2Seconds(channel, BASS_ChannelGetPosition(channel, BASS_POS_BYTE));
}

double SoundTest::LengthSec(uint32_t channel) {
    return BASS_ChannelBytes2Seconds(channel, BASS_ChannelGetLength(channel, BASS_POS_BYTE));
}

std::string SoundTest::SaveMidi(const std::string& track) const {
    return folder_.Write("song.mid", MidiFile(0, 500, {track + EndOfTrack()}));
}

bool SoundTest::UseFont(HSTREAM stream, HSOUNDFONT font) {
    const BASS_MIDI_FONT entry{font, -1, 0};
    return BASS_MIDI_StreamSetFonts(stream, &entry, 1);
}

}  // namespace hullrider
