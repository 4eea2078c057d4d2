// The time that playback goes by: the system's, or that of a test, which passes as fast as the test wants. Any thread.
#pragma once

#include <chrono>

namespace hullrider {

using PlayTime = std::chrono::steady_clock::time_point;

class PlayClock {
public:
    virtual ~PlayClock() = default;
    virtual PlayTime Now() = 0;
    virtual void SleepFor(std::chrono::milliseconds time) = 0;
};

PlayTime PlayNow();
void SleepFor(std::chrono::milliseconds time);

// Until the next call; null restores the system's clock. Not while anything plays or fades.
void SetPlayClock(PlayClock* clock);

}  // namespace hullrider
