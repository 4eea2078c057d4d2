// A clock that a test moves. Every worker that is due runs to its next sleep before time goes on, so that a month
// passes in seconds and always alike.
#pragma once

#include <condition_variable>
#include <mutex>
#include <set>

#include "playback/play_clock.h"

namespace hullrider {

class FakeClock : public PlayClock {
public:
    FakeClock() { SetPlayClock(this); }
    ~FakeClock() override {
        Advance(std::chrono::hours(24 * 30));  // nobody may still wait for it
        SetPlayClock(nullptr);
    }

    PlayTime Now() override {
        const std::lock_guard lock(mutex_);
        return now_;
    }
    void SleepFor(std::chrono::milliseconds time) override {
        std::unique_lock lock(mutex_);
        const PlayTime wake = now_ + time;
        sleepers_.insert(wake);
        changed_.notify_all();
        changed_.wait(lock, [&] { return now_ >= wake; });
    }
    void OnWorkerStart() override {
        const std::lock_guard lock(mutex_);
        ++workers_;
    }
    void OnWorkerEnd() override {
        const std::lock_guard lock(mutex_);
        --workers_;
        changed_.notify_all();
    }

    void Advance(std::chrono::milliseconds time) {
        std::unique_lock lock(mutex_);
        const PlayTime until = now_ + time;
        for (;;) {
            changed_.wait(lock, [&] { return workers_ == sleepers_.size(); });
            if (sleepers_.empty() || *sleepers_.begin() > until) break;
            now_ = *sleepers_.begin();
            sleepers_.erase(sleepers_.begin(), sleepers_.upper_bound(now_));
            changed_.notify_all();
        }
        now_ = until;
    }

    size_t Workers() {
        const std::lock_guard lock(mutex_);
        return workers_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    PlayTime now_{std::chrono::hours(1)};
    std::multiset<PlayTime> sleepers_;
    size_t workers_ = 0;
};

}  // namespace hullrider
