// Sound in memory: two channels of equal length at the one rate that the recordings are made at.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace hullrider::demo {

constexpr double kPi = 3.14159265358979323846;
constexpr int kSampleRate = 44100;

inline size_t FramesOf(double seconds) {
    return static_cast<size_t>(std::lround(seconds * kSampleRate));
}

struct Stereo {
    std::vector<float> left, right;

    explicit Stereo(size_t frames = 0) : left(frames), right(frames) {}
    size_t frames() const { return left.size(); }

    // Mixes one frame in; a frame beyond the end is dropped.
    void Add(size_t frame, double l, double r) {
        if (frame >= left.size()) return;
        left[frame] += static_cast<float>(l);
        right[frame] += static_cast<float>(r);
    }
};

// Mixes `from` into `into`, each channel with a gain of its own.
inline void MixIn(Stereo& into, const Stereo& from, double leftGain, double rightGain) {
    for (size_t i = 0; i < from.frames(); ++i) into.Add(i, leftGain * from.left[i], rightGain * from.right[i]);
}

}  // namespace hullrider::demo
