#include "audio/block_clock.h"

#include <chrono>
#include <utility>

namespace hullrider {

namespace {

using Clock = std::chrono::steady_clock;

// After so long a halt (the computer slept) time goes on from now instead of being caught up with.
constexpr std::chrono::seconds kLongHalt(2);

}  // namespace

BlockClock::BlockClock(uint32_t rate, std::function<void(size_t)> playBlock)
    : rate_(rate), playBlock_(std::move(playBlock)), thread_([this] { Run(); }) {}

BlockClock::~BlockClock() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void BlockClock::Run() {
    const size_t blockFrames = BlockFrames(rate_);
    Clock::time_point start = Clock::now();
    uint64_t frames = 0;
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        lock.unlock();
        playBlock_(blockFrames);
        lock.lock();
        frames += blockFrames;
        const Clock::time_point due = start + std::chrono::seconds(frames / rate_) +
                                      std::chrono::nanoseconds(frames % rate_ * 1'000'000'000 / rate_);
        if (Clock::now() > due + kLongHalt) {
            start = Clock::now();
            frames = 0;
        }
        wake_.wait_until(lock, due, [&] { return stopping_; });
    }
}

}  // namespace hullrider
