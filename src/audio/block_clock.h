// Calls a function for each block of sound in real time: on average at exactly the rate, even if single blocks are
// late. Its thread runs from creation until Stop.
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
    // 25 blocks a second, unless there is a reason for another length.
    static size_t BlockFrames(uint32_t rate) { return rate / 25; }

    // A block's length, and whether it may be cut short because nothing was audible.
    struct Block {
        size_t frames = 0;
        bool idle = false;
    };

    BlockClock(uint32_t rate, std::function<Block()> playBlock);
    ~BlockClock() { Stop(); }

    // No block is played after it has returned. One thread.
    void Stop();

    // Any thread: an idle block ends now, and the next one follows.
    void EndIdleBlock();
    // Any thread: how much of the last block's time remains; 0 for an idle one.
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
