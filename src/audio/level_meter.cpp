#include "audio/level_meter.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "audio/ring.h"

namespace hullrider {

void LevelMeter::Note(const float* frames, size_t count) {
    while (count > 0) {
        const size_t now = std::min(count, spanFrames_ - inSpan_);
        StereoPeak& span = spans_[running_];
        for (size_t i = 0; i < now; i++) {
            span.left = std::max(span.left, std::fabs(frames[i * kStereo]));
            span.right = std::max(span.right, std::fabs(frames[i * kStereo + 1]));
        }
        frames += now * kStereo;
        count -= now;
        inSpan_ += now;
        if (inSpan_ == spanFrames_) CloseSpan();
    }
    StereoPeak peak;
    for (const StereoPeak& span : spans_) {
        peak.left = std::max(peak.left, span.left);
        peak.right = std::max(peak.right, span.right);
    }
    peak_.store(uint64_t{std::bit_cast<uint32_t>(peak.left)} << 32 | std::bit_cast<uint32_t>(peak.right));
}

void LevelMeter::CloseSpan() {
    running_ = (running_ + 1) % kSpans;
    spans_[running_] = {};
    inSpan_ = 0;
}

void LevelMeter::Reset() {
    spans_ = {};
    inSpan_ = 0;
    peak_.store(0);
}

StereoPeak LevelMeter::Peak() const {
    const uint64_t peak = peak_.load();
    return {std::bit_cast<float>(static_cast<uint32_t>(peak >> 32)), std::bit_cast<float>(static_cast<uint32_t>(peak))};
}

}  // namespace hullrider
