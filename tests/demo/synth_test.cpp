#include <gtest/gtest.h>

#include <algorithm>
#include <complex>

#include "demo_music/synth/effects.h"
#include "demo_music/synth/instrument.h"
#include "tests/demo/heard.h"

namespace hullrider::demo {
namespace {

// The part of the sound from `fromSec` on that oscillates at `hz`.
std::complex<double> PartialAt(const Stereo& sound, double hz, double fromSec) {
    constexpr double kWindowSec = 0.2;
    std::complex<double> sum;
    for (size_t i = 0; i < FramesOf(kWindowSec); ++i) {
        const double seconds = fromSec + static_cast<double>(i) / kSampleRate;
        const double window =
            1 - std::cos(2 * kPi * static_cast<double>(i) / static_cast<double>(FramesOf(kWindowSec)));
        sum += window * sound.left[FramesOf(fromSec) + i] * std::polar(1.0, -2 * kPi * hz * seconds);
    }
    return sum;
}

// How far the partial is from `hz`, by how its phase drifts.
double CentsFrom(double hz, const Stereo& sound) {
    constexpr double kStepSec = 0.02;
    const double drift = std::arg(PartialAt(sound, hz, 0.2 + kStepSec) / PartialAt(sound, hz, 0.2));
    return 1200 * std::log2(1 + drift / (2 * kPi * kStepSec * hz));
}

TEST(Instruments, AreInTuneAndComeToRest) {
    const struct {
        const char* name;
        Instrument instrument;
    } cases[] = {
        {"string", PluckedString({4, 0.5, 0.35, 0.2})},
        {"bright string", PluckedString({4, 0.9, 0.1, 0.1})},
        {"saw", Subtractive({.oscillators = 1})},
        {"pulse", Subtractive({.wave = Wave::kPulse, .oscillators = 1, .cutoffHz = 3000})},
        {"bell", FrequencyModulated({{{1, 3.5, 1.5, 1, 3, 1}}, 0, 0, 0.5})},
    };
    for (const auto& [name, instrument] : cases) {
        for (const int key : {40, 57, 72, 88}) {
            SCOPED_TRACE(std::string(name) + ", key " + std::to_string(key));
            Random random(1);
            Stereo sound(FramesOf(2.5));
            instrument({key, FrequencyOf(key), 0.8, 0.8}, 0, random, sound);
            EXPECT_NEAR(CentsFrom(FrequencyOf(key), sound), 0, 4);
            EXPECT_GT(PeakOf(sound), 0.1);
            EXPECT_LT(PeakOf(sound), 2);
            EXPECT_TRUE(
                std::all_of(sound.left.end() - 1000, sound.left.end(), [](float s) { return std::abs(s) < 1e-3; }));
        }
    }
}

Stereo Noise(double seconds, double level) {
    Random random(2);
    Stereo sound(FramesOf(seconds));
    for (size_t i = 0; i < sound.frames(); ++i) sound.Add(i, level * random.Bipolar(), level * random.Bipolar());
    return sound;
}

TEST(Mastering, ReachesTheLoudnessAndNeverPassesTheCeiling) {
    Stereo sound = Noise(10, 0.02);
    for (size_t i = 5000; i < sound.frames(); i += 30000) sound.Add(i, 0.5, -0.9);  // peaks far above the rest
    sound.Add(0, 1, 1);
    sound.Add(sound.frames() - 1, -1, 1);
    Master(sound, -17, 0.78);
    EXPECT_LE(PeakOf(sound), 0.7801);
    EXPECT_GT(PeakOf(sound), 0.7);
    EXPECT_NEAR(LoudnessOf(sound), -17, 1);
}

TEST(Effects, TheRoomFallsSilentInItsTime) {
    Stereo click(FramesOf(4));
    click.Add(0, 1, 1);
    const Stereo room = Reverberate(click, 2);
    const auto energy = [&](double from, double to) {
        double sum = 0;
        for (size_t i = FramesOf(from); i < FramesOf(to); ++i) sum += room.left[i] * room.left[i];
        return sum;
    };
    EXPECT_GT(energy(0.02, 0.5), 0.1);
    const double fallDb = 10 * std::log10(energy(0.3, 0.8) / energy(1.3, 1.8));
    EXPECT_GT(fallDb, 25);  // 30 dB a second, or more: highs die faster
    EXPECT_LT(fallDb, 50);
}

TEST(Effects, EchoesGoFromSideToSideAndGrowWeaker) {
    Stereo sent(FramesOf(2));
    for (size_t i = 0; i < FramesOf(0.05); ++i) {
        const double value = std::sin(2 * kPi * 300 * static_cast<double>(i) / kSampleRate);
        sent.Add(i, value, value);
    }
    const Stereo echoes = Echo(sent, 0.4, 0.5);
    const auto level = [](const std::vector<float>& channel, double fromSec) {
        return *std::max_element(channel.begin() + FramesOf(fromSec), channel.begin() + FramesOf(fromSec + 0.1));
    };
    EXPECT_NEAR(level(echoes.left, 0.4), 1, 0.2);
    EXPECT_LT(level(echoes.right, 0.4), 0.05);
    EXPECT_NEAR(level(echoes.right, 0.8), 0.5, 0.15);
    EXPECT_NEAR(level(echoes.left, 1.2), 0.25, 0.1);
}

}  // namespace
}  // namespace hullrider::demo
