// Three ways for a sound to begin, end or go on without a click where it does not follow from itself. For one thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "audio/ring.h"

namespace hullrider {

// Lets a sound that begins in mid-wave rise over a few milliseconds.
class RampIn {
public:
    explicit RampIn(uint32_t rate);
    void Begin() { left_ = length_; }
    void End() { left_ = 0; }
    void Apply(float* frames, size_t count);

private:
    size_t length_;
    size_t left_ = 0;  // frames that are still below their own loudness
};

// Lets a sound that breaks off in mid-wave fall as quickly.
class RampOut {
public:
    explicit RampOut(uint32_t rate);
    void Begin() { done_ = 0; }
    void Apply(float* frames, size_t count);
    size_t Done() const { return done_; }
    size_t Left() const { return length_ - done_; }  // frames that are still to be heard

private:
    size_t length_;
    size_t done_ = 0;
};

// Joins two pieces of sound: the difference between the last frame of the one and the first of the other dies away.
class StepSmoother {
public:
    explicit StepSmoother(uint32_t rate);
    // The next frames do not follow from the last ones.
    void Join(const float* next);
    // Nothing was heard before the next frames.
    void Forget() { left_ = 0; }
    // Has to see every frame.
    void Apply(float* frames, size_t count);

private:
    size_t length_;
    size_t left_ = 0;                      // frames until the difference is gone
    std::array<float, kStereo> last_{};    // the last frame that left
    std::array<float, kStereo> offset_{};  // at the joint
};

}  // namespace hullrider
