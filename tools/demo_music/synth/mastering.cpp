#include <ebur128.h>

#include <algorithm>
#include <deque>
#include <memory>

#include "demo_music/synth/effects.h"

namespace hullrider::demo {
namespace {

constexpr size_t kLookAhead = 220;  // 5 ms

double PeakAt(const Stereo& sound, size_t i) {
    return std::max(std::abs(static_cast<double>(sound.left[i])), std::abs(static_cast<double>(sound.right[i])));
}

// The gain for each frame: the least that any frame within the look-ahead needs, averaged over the look-ahead before
// and after, so that it moves smoothly and is low enough where the peak is.
std::vector<double> LimiterGains(const Stereo& sound, double ceiling) {
    const size_t frames = sound.frames();
    std::vector<double> least;
    std::deque<std::pair<size_t, double>> rising;  // candidates for the least, oldest first
    for (size_t i = 0; i < frames + kLookAhead; ++i) {
        const double needed = i < frames ? std::min(1.0, ceiling / std::max(1e-9, PeakAt(sound, i))) : 1.0;
        while (!rising.empty() && rising.back().second >= needed) rising.pop_back();
        rising.emplace_back(i, needed);
        if (rising.front().first + kLookAhead < i) rising.pop_front();
        least.push_back(rising.front().second);
    }
    // least[i] covers the frames i - kLookAhead to i; averaged over i to i + kLookAhead, each part covers frame i.
    std::vector<double> gains(frames);
    double sum = 0;
    for (size_t i = 0; i < kLookAhead; ++i) sum += least[i];
    for (size_t i = 0; i < frames; ++i) {
        sum += least[i + kLookAhead];
        gains[i] = sum / (kLookAhead + 1);
        sum -= least[i];
    }
    return gains;
}

}  // namespace

double LoudnessOf(const Stereo& sound) {
    const auto close = [](ebur128_state* state) { ebur128_destroy(&state); };
    const std::unique_ptr<ebur128_state, decltype(close)> meter(ebur128_init(2, kSampleRate, EBUR128_MODE_I), close);
    std::vector<float> frames(sound.frames() * 2);
    for (size_t i = 0; i < sound.frames(); ++i) {
        frames[2 * i] = sound.left[i];
        frames[2 * i + 1] = sound.right[i];
    }
    double loudness = -1000;
    if (!meter || ebur128_add_frames_float(meter.get(), frames.data(), sound.frames()) != EBUR128_SUCCESS)
        return loudness;
    ebur128_loudness_global(meter.get(), &loudness);
    return std::max(loudness, -1000.0);
}

void Master(Stereo& sound, double loudnessLufs, double ceiling) {
    const double gain = std::pow(10.0, (loudnessLufs - LoudnessOf(sound)) / 20);
    for (size_t i = 0; i < sound.frames(); ++i) {
        sound.left[i] *= static_cast<float>(gain);
        sound.right[i] *= static_cast<float>(gain);
    }
    const std::vector<double> gains = LimiterGains(sound, ceiling);
    for (size_t i = 0; i < sound.frames(); ++i) {
        sound.left[i] *= static_cast<float>(gains[i]);
        sound.right[i] *= static_cast<float>(gains[i]);
    }
}

}  // namespace hullrider::demo
