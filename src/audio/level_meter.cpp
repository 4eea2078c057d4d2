#include "audio/level_meter.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "audio/ring.h"

namespace hullrider {

StereoPeak PeakOf(const float* frames, size_t count) {
    StereoPeak peak;
    for (size_t i = 0; i < count; i++) {
        peak.left = std::max(peak.left, std::fabs(frames[i * kStereo]));
        peak.right = std::max(peak.right, std::fabs(frames[i * kStereo + 1]));
    }
    return peak;
}

void LevelMeter::Note(const float* frames, size_t count) {
    while (count > 0) {
        const size_t now = std::min(count, spanFrames_ - inSpan_);
        StereoPeak& span = spans_[running_];
        const StereoPeak peak = PeakOf(frames, now);
        span = {std::max(span.left, peak.left), std::max(span.right, peak.right)};
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
    const bool isQuiet = std::max(spans_[running_].left, spans_[running_].right) <= kQuiet;
    quietSpans_.store(isQuiet ? quietSpans_.load() + 1 : 0);
    running_ = (running_ + 1) % kSpans;
    spans_[running_] = {};
    inSpan_ = 0;
}

void LevelMeter::Reset() {
    spans_ = {};
    inSpan_ = 0;
    peak_.store(0);
    quietSpans_.store(0);
}

StereoPeak LevelMeter::Peak() const {
    const uint64_t peak = peak_.load();
    return {std::bit_cast<float>(static_cast<uint32_t>(peak >> 32)), std::bit_cast<float>(static_cast<uint32_t>(peak))};
}

}  // namespace hullrider
