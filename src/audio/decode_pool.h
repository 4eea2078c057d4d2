// The few threads that decode ahead for all channels. Each channel says when it needs them next; they sleep until then.
// Callable from any thread but the callback.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "audio/channel.h"

namespace hullrider {

class DecodePool {
public:
    // `clearUp` is called on these threads after channels were dropped, and again soon while it returns false.
    explicit DecodePool(std::function<bool()> clearUp);
    ~DecodePool();

    // Decodes for this channel as soon as possible, and whenever the channel asks for it, until it is dropped.
    void Enlist(const std::shared_ptr<Channel>& channel);
    // Decodes for an enlisted channel as soon as possible. Ignores one that was dropped meanwhile.
    void Attend(const std::shared_ptr<Channel>& channel);
    // No more decoding for this channel, once the current piece is done.
    void Drop(const std::shared_ptr<Channel>& channel);

private:
    struct Job {
        std::shared_ptr<Channel> channel;
        SteadyTime due;
        SteadyTime begun{};  // while running
        bool running = false;
        bool calledAgain = false;  // Attend was called while running
        bool dropped = false;
    };
    void AddThread();
    void StandInForStuckThreads();
    void Run();
    std::vector<Job>::iterator Find(const Channel* channel);
    std::vector<Job>::iterator NextDue();
    void RunJob(Job& job, std::unique_lock<std::mutex>& lock);
    void ClearUp(std::unique_lock<std::mutex>& lock);
    void Wait(std::unique_lock<std::mutex>& lock);

    std::function<bool()> clearUp_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::vector<Job> jobs_;
    SteadyTime clearUpDue_ = SteadyTime::max();
    // The latest time until which a thread waits. Only one needs to wake for the next due time; the others wait to be
    // called.
    SteadyTime watched_ = SteadyTime::max();
    bool stopping_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace hullrider
