// The time that playback goes by: the system's, or that of a test, which passes as fast as the test wants; and the
// workers that wait for it. Any thread.
#pragma once

#include <chrono>
#include <functional>

namespace hullrider {

using PlayTime = std::chrono::steady_clock::time_point;

class PlayClock {
public:
    virtual ~PlayClock() = default;
    virtual PlayTime Now() = 0;
    virtual void SleepFor(std::chrono::milliseconds time) = 0;
    virtual void OnWorkerStart() = 0;
    virtual void OnWorkerEnd() = 0;
};

PlayTime PlayNow();
void SleepFor(std::chrono::milliseconds time);

// Runs `work` on a detached thread. False when the system has no thread left.
bool StartWorker(std::function<void()> work);

// Until the next call; null restores the system's clock. Not while anything plays or fades.
void SetPlayClock(PlayClock* clock);

}  // namespace hullrider
