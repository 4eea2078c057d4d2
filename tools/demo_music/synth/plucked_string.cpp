#include <algorithm>

#include "demo_music/synth/envelope.h"
#include "demo_music/synth/filter.h"

namespace hullrider::demo {
namespace {

// A burst of noise, softened as a finger softens it, with the partials missing that a pluck at that place cannot
// excite.
std::vector<double> Pluck(const StringPatch& patch, const Tone& tone, size_t period, Random& random) {
    StateVariableFilter softness;
    softness.Tune(400 + 9000 * patch.brightness * tone.velocity, 0);
    std::vector<double> burst(period);
    for (size_t i = 0; i < 64; ++i) softness.LowPass(random.Bipolar());
    for (double& value : burst) value = softness.LowPass(random.Bipolar());

    const auto reflection = static_cast<size_t>(patch.pluckPosition * static_cast<double>(period));
    std::vector<double> comb(period);
    double mean = 0;
    for (size_t i = 0; i < period; ++i) {
        comb[i] = burst[i] - burst[(i + period - reflection) % period];
        mean += comb[i] / static_cast<double>(period);
    }
    double peak = 1e-9;
    for (double& value : comb) peak = std::max(peak, std::abs(value -= mean));
    for (double& value : comb) value *= tone.velocity / peak;
    return comb;
}

void AddString(const StringPatch& patch, const Tone& tone, size_t start, Random& random, Stereo& sound) {
    // The loop is the delay line, the damping filter (`damping` samples long) and an all-pass for what is left.
    const double loop = kSampleRate / tone.hz - patch.damping;
    const auto period = static_cast<size_t>(loop - 0.3);
    const double fraction = loop - static_cast<double>(period);
    const double allPass = (1 - fraction) / (1 + fraction);

    std::vector<double> line = Pluck(patch, tone, period, random);
    const double ring = patch.ringSeconds * std::sqrt(261.6 / tone.hz);
    const double held = std::pow(10.0, -3.0 / (tone.hz * ring)), released = std::pow(10.0, -3.0 / (tone.hz * 0.25));
    const size_t letGo = FramesOf(tone.seconds), end = letGo + FramesOf(0.3);
    const double side = random.Bipolar() * 0.15;

    double last = 0, allPassIn = 0, allPassOut = 0;
    for (size_t i = 0, at = 0; i < end && start + i < sound.frames(); ++i, at = (at + 1) % period) {
        const double value = line[at];
        const double damped = ((1 - patch.damping) * value + patch.damping * last) * (i < letGo ? held : released);
        last = value;
        allPassOut = allPass * (damped - allPassOut) + allPassIn;
        allPassIn = damped;
        line[at] = allPassOut;
        const double fadeIn = std::min(1.0, static_cast<double>(i) / 40.0);
        sound.Add(start + i, value * fadeIn * (1 - side), value * fadeIn * (1 + side));
    }
}

}  // namespace

Instrument PluckedString(const StringPatch& patch) {
    return [patch](const Tone& tone, size_t start, Random& random, Stereo& sound) {
        AddString(patch, tone, start, random, sound);
    };
}

}  // namespace hullrider::demo
