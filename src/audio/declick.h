// Three ways to begin, end or join sounds without a click. One thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "audio/ring.h"

namespace hullrider {

// Fades in a sound that begins in mid-wave, over a few milliseconds.
class RampIn {
public:
    explicit RampIn(uint32_t rate);
    void Begin() { left_ = length_; }
    void End() { left_ = 0; }
    void Apply(float* frames, size_t count);

private:
    size_t length_;
    size_t left_ = 0;  // frames still to fade in
};

// Fades out a sound that stops in mid-wave, as quickly.
class RampOut {
public:
    explicit RampOut(uint32_t rate);
    void Begin() { done_ = 0; }
    void Apply(float* frames, size_t count);
    size_t Done() const { return done_; }
    size_t Left() const { return length_ - done_; }  // frames still to fade out

private:
    size_t length_;
    size_t done_ = 0;
};

// Joins two pieces of sound: the difference between the last frame of one and the first of the other decays.
class StepSmoother {
public:
    explicit StepSmoother(uint32_t rate);
    // The next frames do not continue the last ones.
    void Join(const float* next);
    // Nothing was heard before the next frames.
    void Forget() { left_ = 0; }
    // Must see every frame.
    void Apply(float* frames, size_t count);

private:
    size_t length_;
    size_t left_ = 0;                      // frames until the difference is gone
    std::array<float, kStereo> last_{};    // the last frame of output
    std::array<float, kStereo> offset_{};  // at the joint
};

}  // namespace hullrider
