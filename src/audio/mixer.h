// Adds all channels up, block by block, and keeps the sum within full scale. Render is the device callback's work: no
// lock, no allocation, no file, no print. Everything else is for callers on any thread.
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
    // How much later a channel's frame leaves than it was taken.
    uint32_t LatencyFrames() const { return limiter_.has_value() ? static_cast<uint32_t>(limiter_->DelayFrames()) : 0; }

    // False when there are too many channels already.
    bool Add(std::shared_ptr<Channel> channel);
    // For a channel that was stopped: it is given the time to fall silent, and is destroyed by a later Collect.
    void Remove(const std::shared_ptr<Channel>& channel);
    // Destroys removed channels that no block can still be using. False when some are left for later.
    bool Collect();

    // Before an output ends: the sum falls silent within the next block, and stays so. Whether it has.
    void FallSilent() { falling_ = true; }
    bool IsSilent() const { return silent_; }

    // Frames, over all channels, that were not decoded in time to be heard.
    uint64_t FramesLacked() const { return lacked_.load(); }

    // Writes the next `frames` stereo frames. Should two threads come at once, the second gets silence.
    void Render(float* out, size_t frames);
    // Whether any channel was to play, or its volume on its way, when the last block was mixed.
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
        std::optional<size_t> slot;  // the one in which it still falls silent
        uint64_t begun;              // blocks begun when it left its slot
        std::chrono::steady_clock::time_point since;
    };
    void LeaveSlot(Removed& removed);
    void RenderBlock(float* out, size_t frames);
    bool RenderSlot(Slot& slot, float* out, size_t frames);
    void LetDecay(float left, float right, float* out, size_t frames);
    void LetFall(float* out, size_t frames);

    uint32_t rate_;
    float decay_;  // a frame

    std::mutex mutex_;
    std::vector<std::shared_ptr<Channel>> channels_;  // at the same index as in slots_; not those removed
    std::vector<Removed> removed_;

    std::array<Slot, kMaxChannels> slots_;
    std::atomic<uint64_t> begun_{0}, ended_{0};  // calls of Render
    std::atomic<uint64_t> lacked_{0};
    std::atomic_flag rendering_;
    std::atomic<bool> playing_{false}, falling_{false}, silent_{false};

    // Callback only.
    std::array<float, kBlockFrames * kStereo> scratch_;
    float restLeft_ = 0.0f, restRight_ = 0.0f;  // of sounds that broke off
    std::optional<Limiter> limiter_;
    RampOut rampOut_;
};

}  // namespace hullrider
