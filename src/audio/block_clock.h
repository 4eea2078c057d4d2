// Calls a function for one block of sound after the other, in real time: on average exactly at the rate, however late a
// single block is. Its thread runs from creation to destruction.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

namespace hullrider {

class BlockClock {
public:
    // 25 blocks a second.
    static size_t BlockFrames(uint32_t rate) { return rate / 25; }

    // `playBlock` is given BlockFrames(rate).
    BlockClock(uint32_t rate, std::function<void(size_t frames)> playBlock);
    ~BlockClock();

private:
    void Run();

    uint32_t rate_;
    std::function<void(size_t)> playBlock_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace hullrider
