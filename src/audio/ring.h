// A channel's frames between the decoder thread that writes them and the callback that takes them: one producer, one
// consumer, no lock. A frame is two floats, left and right, at the mixing rate. Frames are numbered from 0 for the life
// of the ring, so that either side can name a place in the sound.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace hullrider {

inline constexpr size_t kStereo = 2;  // floats in a frame

class FrameRing {
public:
    explicit FrameRing(size_t capacityFrames);

    // Producer. The longest stretch in one piece that can be written now, at most `maxFrames`; then what was written.
    std::span<float> Writable(size_t maxFrames);
    void Commit(size_t frames);

    // Consumer. Copies up to `frames` out, none of them at frame `end` or after, and returns how many there were.
    size_t Take(float* out, size_t frames, uint64_t end = ~uint64_t{0});
    // Consumer. As Take, from `skip` frames after the next one on, and leaves them where they are.
    size_t Peek(size_t skip, float* out, size_t frames, uint64_t end) const;
    // Consumer. Passes over everything before frame `number`, which is written already.
    void SkipTo(uint64_t number);

    // Producer. What is at frame `to` and after, of which kSpliceFrames at least are written, takes the place of what
    // is at frame `from` and after: the consumer blends into it there, or as soon after as it hears of it, and never
    // sees as many frames as lie between. One at a time.
    void Splice(uint64_t from, uint64_t to);
    // Producer: whether the consumer has yet to pass the last splice.
    bool Splicing() const { return Taken() < spliceTo_.load(std::memory_order_acquire); }
    static constexpr size_t kSpliceFrames = 1024;

    // Any thread, while nothing is taken: copies `frames` frames that are written, from frame `number` on.
    void Copy(uint64_t number, size_t frames, float* out) const;

    // Any thread: how many frames there are from frame `number` on, or from the next one to be taken if that is later.
    size_t Ahead(uint64_t number) const;

    // Any thread: the number of the next frame to be written and to be taken.
    uint64_t Written() const { return written_.load(std::memory_order_acquire); }
    uint64_t Taken() const { return taken_.load(std::memory_order_acquire); }
    size_t Capacity() const { return capacity_; }

private:
    uint64_t Skip(uint64_t taken) const;
    size_t TakeSplice(uint64_t taken, uint64_t skip, uint64_t end, float* out, size_t frames);

    size_t capacity_;
    std::vector<float> frames_;
    alignas(64) std::atomic<uint64_t> written_{0};
    std::atomic<uint64_t> spliceFrom_{0}, spliceTo_{0};  // none once taken_ has reached spliceTo_
    alignas(64) std::atomic<uint64_t> taken_{0};
    size_t blended_ = 0;  // consumer only: frames of the splice that were taken
};

}  // namespace hullrider
