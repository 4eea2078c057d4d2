#include "audio/limiter.h"

#include <algorithm>
#include <cmath>

#include "audio/sane.h"

namespace hullrider {

namespace {

constexpr uint32_t kAheadMs = 5;
// Low notes peak only every 10 ms, and the gain must not rise between two peaks.
constexpr uint32_t kHoldMs = 12;
constexpr float kReleaseSeconds = 0.07f;  // time constant
constexpr float kCeiling = 0.9999f;       // the limited level
constexpr float kBeyond = 1.001f;         // the target of the release, so that it reaches 1
constexpr float kLoudest = 1e6f;          // louder than any sum of sounds

bool IsCalm(const float* samples, size_t count) {
    bool calm = true;
    for (size_t i = 0; i < count; i++) calm &= std::fabs(samples[i]) <= 1.0f;  // false for NaN
    return calm;
}

}  // namespace

float Limiter::SlidingLeast::Next(float value) {
    if (first_ != end_ && places_[first_ % span_] + span_ <= place_) first_++;
    while (first_ != end_ && values_[(end_ - 1) % span_] >= value) end_--;
    values_[end_ % span_] = value;
    places_[end_ % span_] = place_;
    end_++;
    place_++;
    return values_[first_ % span_];
}

// The sum stays exact: a double can hold it for this many floats of this size.
double Limiter::SlidingMean::Next(float value) {
    sum_ += static_cast<double>(value) - static_cast<double>(values_[next_]);
    values_[next_] = value;
    if (++next_ == values_.size()) next_ = 0;
    return sum_ / static_cast<double>(values_.size());
}

Limiter::Limiter(uint32_t rate)
    : ahead_(rate * kAheadMs / 1000),
      calmAfter_(rate * (2 * kAheadMs + kHoldMs) / 1000 + 2),
      release_(1.0f - std::exp(-1.0f / (kReleaseSeconds * static_cast<float>(rate)))),
      delay_(ahead_ * kStereo),
      least_(rate * (kAheadMs + kHoldMs) / 1000 + 1),
      mean_(ahead_ + 1),
      calm_(calmAfter_) {}

void Limiter::Run(float* frames, size_t count) {
    const bool calm = IsCalm(frames, count * kStereo);
    size_t done = 0;
    while (done < count && !(calm && calm_ >= calmAfter_)) Limit(frames + kStereo * done++);
    Delay(frames + kStereo * done, count - done);
}

void Limiter::Limit(float* frame) {
    MakeSane(frame, kStereo, kLoudest);
    const float gain = NextGain(std::max(std::fabs(frame[0]), std::fabs(frame[1])));
    Delay(frame, 1);
    frame[0] = std::clamp(frame[0] * gain, -1.0f, 1.0f);
    frame[1] = std::clamp(frame[1] * gain, -1.0f, 1.0f);
}

void Limiter::Delay(float* frames, size_t count) {
    while (count > 0) {
        const size_t now = std::min(count, ahead_ - next_);
        std::swap_ranges(frames, frames + now * kStereo, delay_.begin() + static_cast<ptrdiff_t>(next_ * kStereo));
        next_ = (next_ + now) % ahead_;
        frames += now * kStereo;
        count -= now;
    }
}

// The gain of the outgoing frame when a frame with that peak comes in. Every value in the mean is at most what any
// frame within the look-ahead needs, so the mean is at most what the outgoing frame needs.
float Limiter::NextGain(float peak) {
    const float least = least_.Next(peak > 1.0f ? kCeiling / peak : 1.0f);
    gain_ = std::min(least, gain_ + (kBeyond - gain_) * release_);
    calm_ = gain_ == 1.0f ? calm_ + 1 : 0;
    return static_cast<float>(mean_.Next(gain_));
}

}  // namespace hullrider
