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

void FrameRing::Copy(uint64_t number, size_t frames, float* out) const {
    const size_t place = static_cast<size_t>(number % capacity_);
    const size_t first = std::min(frames, capacity_ - place);
    std::copy_n(frames_.data() + place * kStereo, first * kStereo, out);
    std::copy_n(frames_.data(), (frames - first) * kStereo, out + first * kStereo);
}

size_t FrameRing::Take(float* out, size_t frames, uint64_t end) {
    size_t done = 0;
    while (done < frames) {
        const uint64_t taken = taken_.load(std::memory_order_relaxed);
        const uint64_t skip = Skip(taken);
        const uint64_t written = std::min(Written(), end);
        size_t count = std::min(frames - done, static_cast<size_t>(written - std::min(written, taken)));
        if (skip > 0) {
            const uint64_t from = spliceFrom_.load(std::memory_order_relaxed);
            if (taken >= from) {
                const size_t blended = TakeSplice(taken, skip, written, out + done * kStereo, frames - done);
                if (blended == 0) break;
                done += blended;
                continue;
            }
            count = std::min(count, static_cast<size_t>(from - taken));
        }
        if (count == 0) break;
        Copy(taken, count, out + done * kStereo);
        taken_.store(taken + count, std::memory_order_release);
        done += count;
    }
    return done;
}

size_t FrameRing::Peek(size_t skip, float* out, size_t frames, uint64_t end) const {
    if (blended_ > 0) return 0;  // these frames do not continue what was heard
    const uint64_t first = taken_.load(std::memory_order_relaxed) + skip;
    const uint64_t written = std::min(Written(), end);
    const size_t count = std::min(frames, static_cast<size_t>(written - std::min(written, first)));
    Copy(first, count, out);
    return count;
}

// Takes frames of the blend from the old sound to the new one; at its end, skips the old one.
size_t FrameRing::TakeSplice(uint64_t taken, uint64_t skip, uint64_t end, float* out, size_t frames) {
    const auto ready = static_cast<size_t>(end - std::min(end, taken + skip));
    const size_t count = std::min({frames, ready, kSpliceFrames - blended_});
    for (size_t i = 0; i < count; i++, blended_++) {
        const float share = static_cast<float>(blended_ + 1) / kSpliceFrames;
        const float* before = &frames_[(taken + i) % capacity_ * kStereo];
        const float* after = &frames_[(taken + i + skip) % capacity_ * kStereo];
        for (size_t side = 0; side < kStereo; side++) {
            out[i * kStereo + side] = before[side] + share * (after[side] - before[side]);
        }
    }
    const bool over = blended_ == kSpliceFrames;
    if (over) blended_ = 0;
    taken_.store(taken + count + (over ? skip : 0), std::memory_order_release);
    return count;
}

void FrameRing::Splice(uint64_t from, uint64_t to) {
    spliceFrom_.store(from, std::memory_order_relaxed);
    spliceTo_.store(to, std::memory_order_release);
}

// The frames that the consumer, at frame `taken`, still has to skip.
uint64_t FrameRing::Skip(uint64_t taken) const {
    const uint64_t to = spliceTo_.load(std::memory_order_acquire);
    const uint64_t from = spliceFrom_.load(std::memory_order_relaxed);
    return taken < to && from < to ? to - from : 0;
}

size_t FrameRing::Ahead(uint64_t number) const {
    const uint64_t written = Written(), taken = std::max(Taken(), number);
    return static_cast<size_t>(written - std::min(written, taken + Skip(taken)));
}

void FrameRing::SkipTo(uint64_t number) {
    if (number <= taken_.load(std::memory_order_relaxed)) return;
    taken_.store(number, std::memory_order_release);
    blended_ = 0;
}

}  // namespace hullrider
