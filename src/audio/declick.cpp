#include "audio/declick.h"

#include <algorithm>

namespace hullrider {

namespace {

constexpr uint32_t kRampMs = 5;
constexpr uint32_t kSmoothMs = 10;

// From 0 to 1, with zero slope at both ends.
float Smooth(float part) {
    return part * part * (3.0f - 2.0f * part);
}

}  // namespace

RampIn::RampIn(uint32_t rate) : length_(size_t{rate} * kRampMs / 1000) {}

void RampIn::Apply(float* frames, size_t count) {
    for (size_t i = 0; i < count && left_ > 0; i++, left_--) {
        const float gain = Smooth(1.0f - static_cast<float>(left_) / static_cast<float>(length_));
        frames[i * kStereo] *= gain;
        frames[i * kStereo + 1] *= gain;
    }
}

RampOut::RampOut(uint32_t rate) : length_(size_t{rate} * kRampMs / 1000) {}

void RampOut::Apply(float* frames, size_t count) {
    for (size_t i = 0; i < count && done_ < length_; i++) {
        done_++;
        const float gain = Smooth(static_cast<float>(Left()) / static_cast<float>(length_));
        frames[i * kStereo] *= gain;
        frames[i * kStereo + 1] *= gain;
    }
}

StepSmoother::StepSmoother(uint32_t rate) : length_(size_t{rate} * kSmoothMs / 1000) {}

void StepSmoother::Join(const float* next) {
    for (size_t side = 0; side < kStereo; side++) offset_[side] = last_[side] - next[side];
    left_ = length_;
}

void StepSmoother::Apply(float* frames, size_t count) {
    for (size_t i = 0; i < count && left_ > 0; i++, left_--) {
        const float part = Smooth(static_cast<float>(left_) / static_cast<float>(length_));
        for (size_t side = 0; side < kStereo; side++) frames[i * kStereo + side] += offset_[side] * part;
    }
    if (count > 0) std::copy_n(frames + (count - 1) * kStereo, kStereo, last_.begin());
}

}  // namespace hullrider
