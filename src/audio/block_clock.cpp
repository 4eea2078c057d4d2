#include "audio/block_clock.h"

#include <utility>

#include "platform/thread_priority.h"

namespace hullrider {

namespace {

// After a halt this long (the computer slept), time goes on from now instead of catching up.
constexpr std::chrono::seconds kLongHalt(2);

}  // namespace

BlockClock::BlockClock(uint32_t rate, std::function<Block()> playBlock)
    : rate_(rate), playBlock_(std::move(playBlock)), thread_([this] { Run(); }) {}

void BlockClock::Stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (thread_.joinable()) thread_.join();
}

void BlockClock::EndIdleBlock() {
    {
        const std::lock_guard lock(mutex_);
        endIdle_ = true;
    }
    wake_.notify_all();
}

uint32_t BlockClock::FramesLeft() const {
    const Clock::time_point end{Clock::duration(blockEnd_.load())};
    const double seconds = std::chrono::duration<double>(end - Clock::now()).count();
    return seconds > 0.0 ? static_cast<uint32_t>(seconds * rate_) : 0;
}

void BlockClock::Run() {
    RaiseThreadPriority(Urgency::kSound);
    Clock::time_point start = Clock::now();
    uint64_t frames = 0;
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        endIdle_ = false;
        lock.unlock();
        const Block block = playBlock_();
        lock.lock();
        frames += block.frames;
        const Clock::time_point due = start + std::chrono::seconds(frames / rate_) +
                                      std::chrono::nanoseconds(frames % rate_ * 1'000'000'000 / rate_);
        blockEnd_ = block.idle ? 0 : due.time_since_epoch().count();
        wake_.wait_until(lock, due, [&] { return stopping_ || (block.idle && endIdle_); });
        if ((block.idle && endIdle_) || Clock::now() > due + kLongHalt) {
            start = Clock::now();
            frames = 0;
        }
    }
}

}  // namespace hullrider
