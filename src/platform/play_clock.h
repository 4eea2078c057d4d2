// The time that the player goes by: the system's, or that of a test, which passes as fast as the test wants.
// Any thread.
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

    // What waits for the clock: called before a worker's thread starts, and as the last thing on it.
    virtual void OnWorkerStart() = 0;
    virtual void OnWorkerEnd() = 0;
};

PlayTime PlayNow();

// False when the calling thread is a worker and was told to stop; the sleep ends early then.
bool SleepFor(std::chrono::milliseconds time);

// Until the next call; null restores the system's clock. Not while a worker runs.
void SetPlayClock(PlayClock* clock);
PlayClock* ClockOfTest();  // null: the system's

}  // namespace hullrider
