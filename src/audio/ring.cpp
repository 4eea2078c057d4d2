#include "audio/ring.h"

#include <algorithm>

namespace hullrider {

FrameRing::FrameRing(size_t capacityFrames) : capacity_(capacityFrames), frames_(capacityFrames * kStereo) {}

std::span<float> FrameRing::Writable(size_t maxFrames) {
    const uint64_t written = written_.load(std::memory_order_relaxed);
    const size_t room = capacity_ - static_cast<size_t>(written - Taken());
    const size_t place = static_cast<size_t>(written % capacity_);
    const size_t count = std::min({maxFrames, room, capacity_ - place});
    return {frames_.data() + place * kStereo, count * kStereo};
}

void FrameRing::Commit(size_t frames) {
    written_.store(written_.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

size_t FrameRing::Take(float* out, size_t frames) {
    const uint64_t taken = taken_.load(std::memory_order_relaxed);
    const size_t count = std::min(frames, static_cast<size_t>(Written() - taken));
    const size_t place = static_cast<size_t>(taken % capacity_);
    const size_t first = std::min(count, capacity_ - place);
    std::copy_n(frames_.data() + place * kStereo, first * kStereo, out);
    std::copy_n(frames_.data(), (count - first) * kStereo, out + first * kStereo);
    taken_.store(taken + count, std::memory_order_release);
    return count;
}

void FrameRing::SkipTo(uint64_t number) {
    if (number > taken_.load(std::memory_order_relaxed)) taken_.store(number, std::memory_order_release);
}

}  // namespace hullrider
