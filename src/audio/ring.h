// A channel's frames on their way from the decoder thread to the callback: one producer, one consumer, no lock. A frame
// is two floats, left and right, at the mixing rate. Frames are numbered from 0 over the life of the ring, so that both
// sides can refer to a place in the sound.
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

    // Producer. The longest contiguous space for writing, up to `maxFrames`; then commits what was written.
    std::span<float> Writable(size_t maxFrames);
    void Commit(size_t frames);

    // Consumer. Copies out up to `frames` frames before frame `end`, and returns their number.
    size_t Take(float* out, size_t frames, uint64_t end = ~uint64_t{0});
    // Consumer. As Take, starting `skip` frames after the next one, but leaves them in the ring.
    size_t Peek(size_t skip, float* out, size_t frames, uint64_t end) const;
    // Consumer. Skips everything before frame `number`, which must be written.
    void SkipTo(uint64_t number);

    // Producer. Replaces the frames from `from` on by those from `to` on, of which at least kSpliceFrames are written:
    // the consumer blends over at `from`, or as soon afterward as it learns of it, and never sees as many frames as lie
    // between. One splice at a time.
    void Splice(uint64_t from, uint64_t to);
    // Producer: whether the consumer has yet to pass the last splice.
    bool Splicing() const { return Taken() < spliceTo_.load(std::memory_order_acquire); }
    static constexpr size_t kSpliceFrames = 1024;

    // Any thread, while nothing is taken: copies `frames` written frames from frame `number` on.
    void Copy(uint64_t number, size_t frames, float* out) const;

    // Any thread: the number of frames from `number` on, or from the next one to be taken if that is later.
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
    std::atomic<uint64_t> spliceFrom_{0}, spliceTo_{0};  // no splice once taken_ has reached spliceTo_
    alignas(64) std::atomic<uint64_t> taken_{0};
    size_t blended_ = 0;  // consumer only: frames taken of the splice
};

}  // namespace hullrider
