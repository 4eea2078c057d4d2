#include "platform/play_clock.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "platform/stop_scope.h"

namespace hullrider {

namespace {

std::atomic<PlayClock*> clockOfTest{nullptr};

bool SleepUnlessStopped(std::chrono::milliseconds time, const std::stop_token& stop) {
    std::mutex mutex;
    std::condition_variable_any stopped;
    std::unique_lock lock(mutex);
    stopped.wait_for(lock, stop, time, [] { return false; });
    return !stop.stop_requested();
}

}  // namespace

PlayTime PlayNow() {
    PlayClock* const clock = clockOfTest;
    return clock == nullptr ? std::chrono::steady_clock::now() : clock->Now();
}

bool SleepFor(std::chrono::milliseconds time) {
    PlayClock* const clock = clockOfTest;
    const std::stop_token stop = CurrentStopToken();
    return clock == nullptr ? SleepUnlessStopped(time, stop) : clock->SleepFor(time, stop);
}

void SetPlayClock(PlayClock* clock) {
    clockOfTest = clock;
}

PlayClock* ClockOfTest() {
    return clockOfTest;
}

}  // namespace hullrider
