// Calls a function for one block of sound after the other, in real time: on average exactly at the rate, however late a
// single block is. Its thread runs from creation until it is stopped.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

namespace hullrider {

class BlockClock {
public:
    // 25 blocks a second, for those who have no reason to choose another length.
    static size_t BlockFrames(uint32_t rate) { return rate / 25; }

    // What a block was: how long it lasts, and whether it may be cut short because nothing was to be heard.
    struct Block {
        size_t frames = 0;
        bool idle = false;
    };

    BlockClock(uint32_t rate, std::function<Block()> playBlock);
    ~BlockClock() { Stop(); }

    // Once it has returned, no block is played any more. One thread.
    void Stop();

    // Any thread: the next block comes at once instead of after an idle one.
    void EndIdleBlock();
    // Any thread: how much of the last block's time is still to come; nothing of an idle one.
    uint32_t FramesLeft() const;

private:
    using Clock = std::chrono::steady_clock;

    void Run();

    uint32_t rate_;
    std::function<Block()> playBlock_;
    std::atomic<Clock::time_point::rep> blockEnd_{0};
    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopping_ = false;
    bool endIdle_ = false;
    std::thread thread_;
};

}  // namespace hullrider
