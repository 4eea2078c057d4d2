#include "audio/decode_pool.h"

#include <algorithm>
#include <utility>

#include "platform/thread_priority.h"

namespace hullrider {

namespace {

constexpr size_t kThreads = 2, kMostThreads = 8;
constexpr std::chrono::milliseconds kStuck(500);
constexpr std::chrono::milliseconds kClearUpRetry(10);

SteadyTime Now() {
    return std::chrono::steady_clock::now();
}

}  // namespace

DecodePool::DecodePool(std::function<bool()> clearUp) : clearUp_(std::move(clearUp)) {
    for (size_t i = 0; i < kThreads; i++) AddThread();
}

void DecodePool::AddThread() {
    threads_.emplace_back([this] { Run(); });
}

DecodePool::~DecodePool() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

std::vector<DecodePool::Job>::iterator DecodePool::Find(const Channel* channel) {
    return std::find_if(jobs_.begin(), jobs_.end(), [&](const Job& job) { return job.channel.get() == channel; });
}

void DecodePool::Enlist(const std::shared_ptr<Channel>& channel) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back({.channel = channel, .due = Now()});
        StandInForStuckThreads();
    }
    wake_.notify_one();
}

void DecodePool::Attend(const std::shared_ptr<Channel>& channel) {
    {
        const std::lock_guard lock(mutex_);
        const auto job = Find(channel.get());
        if (job == jobs_.end()) return;
        job->due = Now();
        job->calledAgain = true;
        StandInForStuckThreads();
    }
    wake_.notify_one();
}

// A lost drive holds its reader for as long as the system likes. The next song must not wait for it.
void DecodePool::StandInForStuckThreads() {
    const auto isStuck = [](const Job& job) { return job.running && Now() - job.begun > kStuck; };
    const auto stuck = static_cast<size_t>(std::count_if(jobs_.begin(), jobs_.end(), isStuck));
    if (stuck == threads_.size() && stuck < kMostThreads) AddThread();
}

void DecodePool::Drop(const std::shared_ptr<Channel>& channel) {
    {
        const std::lock_guard lock(mutex_);
        clearUpDue_ = Now();
        const auto job = Find(channel.get());
        if (job != jobs_.end() && job->running) job->dropped = true;
        if (job != jobs_.end() && !job->running) jobs_.erase(job);
    }
    wake_.notify_one();
}

std::vector<DecodePool::Job>::iterator DecodePool::NextDue() {
    return std::min_element(jobs_.begin(), jobs_.end(), [](const Job& a, const Job& b) {
        return std::pair(a.running, a.due) < std::pair(b.running, b.due);
    });
}

void DecodePool::Run() {
    RaiseThreadPriority(Urgency::kAhead);
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        const auto job = NextDue();
        if (job != jobs_.end() && !job->running && job->due <= Now()) {
            RunJob(*job, lock);
        } else if (clearUpDue_ <= Now()) {
            ClearUp(lock);
        } else {
            Wait(lock);
        }
    }
}

void DecodePool::RunJob(Job& job, std::unique_lock<std::mutex>& lock) {
    job.running = true;
    job.begun = Now();
    job.calledAgain = false;
    std::shared_ptr<Channel> channel = job.channel;
    lock.unlock();
    const SteadyTime due = channel->DecodeAhead(Now());
    lock.lock();
    const auto same = Find(channel.get());  // others may have come and gone meanwhile
    same->running = false;
    if (same->dropped) {
        jobs_.erase(same);
        lock.unlock();
        channel.reset();  // possibly the last reference, and freeing takes time
        lock.lock();
    } else if (!same->calledAgain) {
        same->due = due;
    }
}

void DecodePool::ClearUp(std::unique_lock<std::mutex>& lock) {
    clearUpDue_ = SteadyTime::max();
    lock.unlock();
    const bool done = clearUp_();
    lock.lock();
    if (!done) clearUpDue_ = std::min(clearUpDue_, Now() + kClearUpRetry);
}

void DecodePool::Wait(std::unique_lock<std::mutex>& lock) {
    const auto job = NextDue();
    SteadyTime until = clearUpDue_;
    if (job != jobs_.end() && !job->running) until = std::min(until, job->due);
    if (until >= watched_) {
        wake_.wait(lock);
        return;
    }
    watched_ = until;
    wake_.wait_until(lock, until);
    if (watched_ == until) watched_ = SteadyTime::max();
    // This thread will be busy: another one takes over the waiting.
    if (jobs_.size() > 1) wake_.notify_one();
}

}  // namespace hullrider
