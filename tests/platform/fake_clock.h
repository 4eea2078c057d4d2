// A clock that a test moves. Every worker that is due runs to its next sleep before time goes on, so that a month
// passes in seconds and always alike.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/play_clock.h"

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
    bool SleepFor(std::chrono::milliseconds time, const std::stop_token& stop) override {
        if (std::this_thread::get_id() == owner_) {
            Advance(time);  // nobody else will
            return !stop.stop_requested();
        }
        Sleeper self{Now() + time};
        {
            const std::lock_guard lock(mutex_);
            asleep_.push_back(&self);
            changed_.notify_all();
        }
        const auto isSelf = [&](const Sleeper* sleeper) { return sleeper == &self; };
        const std::stop_callback stopped(stop, [&] { WakeIf(isSelf); });
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return std::ranges::find(asleep_, &self) == asleep_.end(); });
        return !stop.stop_requested();
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
        const PlayTime until = Now() + time;
        for (;;) {
            Settle();
            {
                const std::lock_guard lock(mutex_);
                const auto first = std::ranges::min_element(asleep_, {}, &Sleeper::wake);
                if (first == asleep_.end() || (*first)->wake > until) break;
                now_ = (*first)->wake;
            }
            WakeIf([this](const Sleeper* sleeper) { return sleeper->wake <= now_; });
        }
        const std::lock_guard lock(mutex_);
        now_ = until;
    }

    // Waits until every worker sleeps or has ended.
    void Settle() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return workers_ == asleep_.size(); });
    }

    size_t Workers() {
        const std::lock_guard lock(mutex_);
        return workers_;
    }

private:
    struct Sleeper {
        PlayTime wake;
    };

    void WakeIf(const auto& isDue) {
        const std::lock_guard lock(mutex_);
        std::erase_if(asleep_, isDue);
        changed_.notify_all();
    }

    const std::thread::id owner_ = std::this_thread::get_id();
    std::mutex mutex_;
    std::condition_variable changed_;
    PlayTime now_{std::chrono::hours(1)};
    std::vector<Sleeper*> asleep_;
    size_t workers_ = 0;
};

}  // namespace hullrider
