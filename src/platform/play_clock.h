// The player's time: the system's, or a test's, which passes as fast as the test wants. Any thread.
#pragma once

#include <chrono>
#include <stop_token>

namespace hullrider {

using PlayTime = std::chrono::steady_clock::time_point;

class PlayClock {
public:
    virtual ~PlayClock() = default;
    virtual PlayTime Now() = 0;
    virtual bool SleepFor(std::chrono::milliseconds time, const std::stop_token& stop) = 0;

    // Keeps a test's clock from advancing past workers: called before a worker's thread starts and last on that thread.
    virtual void OnWorkerStart() = 0;
    virtual void OnWorkerEnd() = 0;
};

PlayTime PlayNow();

// False, and the sleep ends early, when the calling thread is a worker that was told to stop.
bool SleepFor(std::chrono::milliseconds time);

// Takes effect until the next call; null restores the system's clock. Not while a worker runs.
void SetPlayClock(PlayClock* clock);
PlayClock* ClockOfTest();  // null: the system's

}  // namespace hullrider
