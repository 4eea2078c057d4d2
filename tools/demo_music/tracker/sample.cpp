#include "demo_music/tracker/sample.h"

#include <algorithm>
#include <numeric>

namespace hullrider::demo {
namespace {

void Normalize(std::vector<double>& wave) {
    double peak = 1e-9;
    for (const double value : wave) peak = std::max(peak, std::abs(value));
    for (double& value : wave) value *= 0.98 / peak;
}

// The highest harmonic that the rate can hold.
size_t HarmonicsBelow(double rate, double hz, size_t count) {
    return std::min(count, static_cast<size_t>(0.46 * rate / hz));
}

// A windowed-sinc resampler from kSampleRate down to `rate`.
std::vector<double> Resampled(const std::vector<double>& from, double rate) {
    constexpr int kSide = 24;
    const double ratio = kSampleRate / rate;
    std::vector<double> to(static_cast<size_t>(static_cast<double>(from.size()) / ratio));
    for (size_t i = 0; i < to.size(); ++i) {
        const double center = static_cast<double>(i) * ratio;
        const auto first = static_cast<long>(std::ceil(center - kSide * ratio));
        const auto last = static_cast<long>(center + kSide * ratio);
        for (long n = std::max(0L, first); n <= last && n < static_cast<long>(from.size()); ++n) {
            const double x = (static_cast<double>(n) - center) / ratio;
            const double sinc = std::abs(x) < 1e-9 ? 1 : std::sin(kPi * 0.92 * x) / (kPi * 0.92 * x);
            to[i] += from[static_cast<size_t>(n)] * 0.92 / ratio * sinc * (0.5 + 0.5 * std::cos(kPi * x / kSide));
        }
    }
    return to;
}

}  // namespace

Sample ChipWave(std::string name, const std::vector<double>& levels, int key) {
    // Every level is held for a few frames, so that a player's interpolation keeps the steps.
    constexpr size_t kHold = 4;
    Sample sample{std::move(name), {}, 0, key, 0, 0};
    for (const double level : levels) sample.wave.insert(sample.wave.end(), kHold, level);
    const double mean = std::accumulate(levels.begin(), levels.end(), 0.0) / static_cast<double>(levels.size());
    for (double& value : sample.wave) value -= mean;
    Normalize(sample.wave);
    sample.rate = FrequencyOf(key) * static_cast<double>(sample.wave.size());
    sample.loopLength = sample.wave.size();
    return sample;
}

Sample ChipPulse(std::string name, double duty, int key) {
    std::vector<double> levels(16, -1);
    std::fill_n(levels.begin(), std::lround(duty * 16), 1.0);
    return ChipWave(std::move(name), levels, key);
}

Sample Additive(std::string name, const std::vector<double>& bright, const std::vector<double>& steady, double seconds,
                int key, double rate) {
    const double hz = FrequencyOf(key);
    // Enough cycles in the loop that rounding it to whole frames leaves it in tune; even, for formats that count words.
    const size_t cycles = 32;
    const size_t loop = 2 * static_cast<size_t>(std::lround(static_cast<double>(cycles) * rate / hz / 2));
    const size_t settling = static_cast<size_t>(seconds * rate / static_cast<double>(loop) + 1) * loop;
    const size_t harmonics = HarmonicsBelow(rate, hz, bright.size());

    Sample sample{std::move(name), std::vector<double>(settling + loop), 0, key, settling, loop};
    for (size_t i = 0; i < sample.wave.size(); ++i) {
        const double settled = std::min(1.0, static_cast<double>(i) / static_cast<double>(settling));
        const double rest = (1 - settled) * (1 - settled);
        const double phase = 2 * kPi * static_cast<double>((i * cycles) % loop) / static_cast<double>(loop);
        for (size_t h = 0; h < harmonics; ++h) {
            const double strength = steady[h] + (bright[h] - steady[h]) * rest;
            sample.wave[i] += strength * std::sin(phase * static_cast<double>(h + 1));
        }
    }
    Normalize(sample.wave);
    sample.rate = hz * static_cast<double>(loop) / static_cast<double>(cycles);
    return sample;
}

Sample EndlessPad(std::string name, const std::vector<double>& strengths, double widthCents, double seconds, int key,
                  double rate, uint64_t seed) {
    const double hz = FrequencyOf(key);
    const auto length = static_cast<size_t>(seconds * rate);
    Sample sample{std::move(name), std::vector<double>(length), rate, key, 0, length};
    Random random(seed);
    for (size_t h = 0; h < HarmonicsBelow(rate, hz, strengths.size()); ++h) {
        const double center = hz * static_cast<double>(h + 1) * seconds;  // in whole cycles of the loop
        const double width = center * (std::exp2(widthCents / 1200) - 1) + 0.5;
        for (long bin = std::lround(center - 2 * width); bin <= std::lround(center + 2 * width); ++bin) {
            const double away = (static_cast<double>(bin) - center) / width;
            const double strength = strengths[h] * std::exp(-away * away) / std::sqrt(width);
            const double step = 2 * kPi * static_cast<double>(bin) / static_cast<double>(length);
            // y[n+1] = 2 cos(step) y[n] - y[n-1]: a sine without calling one.
            const double phase = 2 * kPi * random.Unit(), twice = 2 * std::cos(step);
            double now = std::sin(phase), before = std::sin(phase - step);
            for (double& value : sample.wave) {
                value += strength * now;
                const double next = twice * now - before;
                before = now;
                now = next;
            }
        }
    }
    Normalize(sample.wave);
    return sample;
}

Sample Sampled(std::string name, const Instrument& instrument, const std::vector<int>& keys, double heldSeconds,
               double seconds, int key, double rate) {
    Random random(static_cast<uint64_t>(key));
    Stereo sound(FramesOf(seconds));
    for (const int each : keys) instrument({each, FrequencyOf(each), heldSeconds, 0.8}, 0, random, sound);
    std::vector<double> mono(sound.frames());
    const size_t fade = FramesOf(std::min(0.03, seconds / 4));
    for (size_t i = 0; i < mono.size(); ++i) {
        const double end = std::min(1.0, static_cast<double>(mono.size() - 1 - i) / static_cast<double>(fade));
        mono[i] = 0.5 * (sound.left[i] + sound.right[i]) * end;
    }
    Sample sample{std::move(name), Resampled(mono, rate), rate, key, 0, 0};
    Normalize(sample.wave);
    return sample;
}

}  // namespace hullrider::demo
