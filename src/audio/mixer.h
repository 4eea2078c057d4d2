// Sums all channels block by block and keeps the sum within full scale. Render runs in the device callback: no lock, no
// allocation, no file, no print. Everything else is for callers on any thread.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "audio/declick.h"
#include "audio/limiter.h"
#include "audio/ring.h"

namespace hullrider {

class Channel;

class Mixer {
public:
    Mixer(uint32_t rate, bool limited);

    uint32_t Rate() const { return rate_; }
    // The delay of a channel's frames in the mixer.
    uint32_t LatencyFrames() const { return limiter_.has_value() ? static_cast<uint32_t>(limiter_->DelayFrames()) : 0; }

    // False when there are too many channels.
    bool Add(std::shared_ptr<Channel> channel);
    // For a stopped channel: it gets time to fall silent and is destroyed by a later Collect.
    void Remove(const std::shared_ptr<Channel>& channel);
    // Destroys removed channels that no block can still be using. False when some are left for later.
    bool Collect();

    // Before an output ends: silences the sum within the next block, for good; and whether that has happened.
    void FallSilent() { falling_ = true; }
    bool IsSilent() const { return silent_; }

    // Frames, over all channels, that were not decoded in time.
    uint64_t FramesLacked() const { return lacked_.load(); }

    // Writes the next `frames` stereo frames. If two threads call at once, the second one gets silence.
    void Render(float* out, size_t frames);
    // Whether any channel was playing, or its volume sliding, in the last block.
    bool Playing() const { return playing_.load(); }

private:
    static constexpr size_t kMaxChannels = 256;
    static constexpr size_t kBlockFrames = 1024;

    struct Slot {
        std::atomic<Channel*> channel{nullptr};
        // Callback only: the last frame heard from this slot, and the number of its channel or 0.
        uint64_t heard = 0;
        float left = 0.0f, right = 0.0f;
    };
    struct Removed {
        std::shared_ptr<Channel> channel;
        std::optional<size_t> slot;  // where it is still falling silent
        uint64_t begun;              // blocks started when it left its slot
        std::chrono::steady_clock::time_point since;
    };
    void LeaveSlot(Removed& removed);
    void RenderBlock(float* out, size_t frames);
    bool RenderSlot(Slot& slot, float* out, size_t frames);
    void LetDecay(float left, float right, float* out, size_t frames);
    void LetFall(float* out, size_t frames);

    uint32_t rate_;
    float decay_;  // per frame

    std::mutex mutex_;
    std::vector<std::shared_ptr<Channel>> channels_;  // index as in slots_; without removed ones
    std::vector<Removed> removed_;

    std::array<Slot, kMaxChannels> slots_;
    std::atomic<uint64_t> begun_{0}, ended_{0};  // calls of Render
    std::atomic<uint64_t> lacked_{0};
    std::atomic_flag rendering_;
    std::atomic<bool> playing_{false}, falling_{false}, silent_{false};

    // Callback only.
    std::array<float, kBlockFrames * kStereo> scratch_;
    float restLeft_ = 0.0f, restRight_ = 0.0f;  // remainders of sounds that broke off
    std::optional<Limiter> limiter_;
    RampOut rampOut_;
};

}  // namespace hullrider
