#include "audio/volume.h"

#include <bit>

#include "audio/ring.h"

namespace hullrider {

namespace {

constexpr uint32_t kSmoothMs = 6;

uint64_t Pack(uint32_t high, uint32_t low) {
    return uint64_t{high} << 32 | low;
}

uint32_t High(uint64_t word) {
    return static_cast<uint32_t>(word >> 32);
}

uint32_t Low(uint64_t word) {
    return static_cast<uint32_t>(word);
}

}  // namespace

Volume::Volume(uint32_t mixRate) : mixRate_(mixRate) {
    PostReport();
}

void Volume::Set(float value) {
    const std::lock_guard lock(mutex_);
    Order order;
    order.jumps = true;
    order.jumpTo = value;
    Post(order);
}

void Volume::SlideTo(float target, uint32_t timeMs) {
    if (timeMs == 0) return Set(target);
    const std::lock_guard lock(mutex_);
    Order order;
    if (LastReport().orderNumber != number_) {  // not carried out yet: its jump is still pending
        order.jumps = order_.jumps;
        order.jumpTo = order_.jumpTo;
    }
    order.slides = true;
    order.slideTo = target;
    order.timeMs = timeMs;
    Post(order);
}

float Volume::Get() const {
    const std::lock_guard lock(mutex_);
    const Report report = LastReport();
    const bool waiting = report.orderNumber != number_;
    return waiting && order_.jumps ? order_.jumpTo : report.value;
}

bool Volume::Sliding() const {
    const std::lock_guard lock(mutex_);
    const Report report = LastReport();
    return report.orderNumber != number_ ? order_.slides : report.sliding;
}

void Volume::Post(const Order& order) {
    order_ = order;
    number_ = posted_.Post(order);
}

void Volume::Obey(bool sounding) {
    Order order;
    if (!posted_.ReadNewer(obeyed_, order)) return;
    const size_t smoothFrames = sounding ? size_t{mixRate_} * kSmoothMs / 1000 : 0;
    if (order.jumps) line_.JumpTo(order.jumpTo, smoothFrames);
    if (order.slides) line_.SlideTo(order.slideTo, uint64_t{order.timeMs} * mixRate_ / 1000);
}

void Volume::MixInto(const float* frames, size_t count, float* mix, size_t blockFrames, bool sounding) {
    Obey(sounding);
    line_.MixInto(frames, count, mix);
    lastGain_ = line_.Gain();
    line_.Advance(blockFrames - count);
    PostReport();
}

// An order's number has 31 bits; the remaining one means "sliding".
void Volume::PostReport() {
    report_.store(Pack(std::bit_cast<uint32_t>(line_.Value()), obeyed_ << 1 | (line_.Sliding() ? 1u : 0u)));
}

Volume::Report Volume::LastReport() const {
    const uint64_t report = report_.load();
    return {std::bit_cast<float>(High(report)), Low(report) >> 1, (Low(report) & 1u) != 0};
}

}  // namespace hullrider
