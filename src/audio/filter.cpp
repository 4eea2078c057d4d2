#include "audio/filter.h"

#include <algorithm>
#include <cmath>

#include "audio/sane.h"

namespace hullrider {

namespace {

constexpr uint32_t kFadeMs = 20;

template <typename History>
double Step(const Biquad& f, History& h, double x) {
    const double y = f.b0 * x + f.b1 * h.x1 + f.b2 * h.x2 - f.a1 * h.y1 - f.a2 * h.y2;
    h.x2 = h.x1;
    h.x1 = x;
    h.y2 = h.y1;
    h.y1 = y;
    return y;
}

// Flushes inaudible values, which would slow the processor down as denormals, and NaN, which would never go away.
void Settle(double& value) {
    const double size = std::fabs(value);
    if (!(size > 1e-15 && size < 1e9)) value = 0.0;
}

template <typename Voice>
void RunVoice(Voice& voice, float* frames, size_t count) {
    const Biquad biquad = voice.biquad;
    auto left = voice.sides[0], right = voice.sides[1];
    for (size_t i = 0; i < count; i++) {
        float* frame = frames + i * kStereo;
        frame[0] = static_cast<float>(Step(biquad, left, static_cast<double>(frame[0])));
        frame[1] = static_cast<float>(Step(biquad, right, static_cast<double>(frame[1])));
    }
    for (auto* side : {&left, &right}) {
        for (double* value : {&side->x1, &side->x2, &side->y1, &side->y2}) Settle(*value);
    }
    voice.sides = {left, right};
}

}  // namespace

Filter::Filter(uint32_t rate) : rate_(rate), fadeFrames_(size_t{rate} * kFadeMs / 1000) {}

bool Filter::Shape(const FilterShape& shape, int band) {
    const std::optional<Biquad> biquad = DesignBiquad(shape, rate_);
    if (!biquad.has_value()) return false;
    const std::lock_guard lock(mutex_);
    if (leaving_) return false;
    shape_ = shape;
    band_ = band;
    order_.Post(*biquad);
    return true;
}

FilterShape Filter::Shape() const {
    const std::lock_guard lock(mutex_);
    return shape_;
}

int Filter::Band() const {
    const std::lock_guard lock(mutex_);
    return band_;
}

void Filter::Leave() {
    const std::lock_guard lock(mutex_);
    leaving_ = true;
    order_.Post(Biquad());
}

bool Filter::IsLeaving() const {
    const std::lock_guard lock(mutex_);
    return leaving_;
}

void Filter::Begin() {
    if (fadeLeft_ > 0) EndFade();
    order_.ReadNewer(obeyed_, voice_.biquad);
    voice_.sides = {};
    resting_.store(voice_.biquad.IsNeutral());
}

// After the neutral filter, which is not run, the new one starts as if the first frame had sounded forever.
bool Filter::BeginFade(const float* first) {
    Biquad biquad;
    if (!order_.ReadNewer(obeyed_, biquad) || biquad == voice_.biquad) return false;
    if (voice_.biquad.IsNeutral()) {
        for (size_t side = 0; side < kStereo; side++) {
            const auto value = static_cast<double>(first[side]);
            voice_.sides[side] = {value, value, value, value};
        }
    }
    next_ = {biquad, voice_.sides};
    fadeLeft_ = fadeFrames_;
    resting_.store(false);
    return true;
}

void Filter::RunFade(float* frames, size_t count) {
    for (size_t i = 0; i < count; i++) {
        const double passed = 1.0 - static_cast<double>(fadeLeft_ - i) / static_cast<double>(fadeFrames_);
        const double weight = passed * passed * (3.0 - 2.0 * passed);
        for (size_t side = 0; side < kStereo; side++) {
            float& sample = frames[i * kStereo + side];
            const auto in = static_cast<double>(sample);
            const double old = Step(voice_.biquad, voice_.sides[side], in);
            sample = static_cast<float>(old + (Step(next_.biquad, next_.sides[side], in) - old) * weight);
        }
    }
    fadeLeft_ -= count;
    if (fadeLeft_ == 0) EndFade();
}

void Filter::EndFade() {
    voice_ = next_;
    fadeLeft_ = 0;
    resting_.store(voice_.biquad.IsNeutral());
}

void Filter::Run(float* frames, size_t count) {
    size_t done = 0;
    while (done < count && (fadeLeft_ > 0 || BeginFade(frames + done * kStereo))) {
        const size_t now = std::min(count - done, fadeLeft_);
        RunFade(frames + done * kStereo, now);
        done += now;
    }
    const bool plain = voice_.biquad.IsNeutral();
    if (done < count && !plain) RunVoice(voice_, frames + done * kStereo, count - done);
    if (done > 0 || !plain) MakeSane(frames, count * kStereo, kLoudestEffect);
}

}  // namespace hullrider
