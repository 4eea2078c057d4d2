#include <gtest/gtest.h>

#include <algorithm>
#include <complex>

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
    } cases[] = {{"string", PluckedString({4, 0.5, 0.35, 0.2})},
                 {"bright string", PluckedString({4, 0.9, 0.1, 0.1})},
                 {"saw", Subtractive({.oscillators = 1})},
                 {"pulse", Subtractive({.wave = Wave::kPulse, .oscillators = 1, .cutoffHz = 3000})},
                 {"bell", FrequencyModulated({{{1, 3.5, 1.5, 1, 3, 1}}, 0, 0, 0.5})}};
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

}  // namespace
}  // namespace hullrider::demo
