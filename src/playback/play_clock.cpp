#include "playback/play_clock.h"

#include <atomic>
#include <thread>

namespace hullrider {

namespace {

std::atomic<PlayClock*> clockOfTest{nullptr};

}  // namespace

PlayTime PlayNow() {
    PlayClock* const clock = clockOfTest;
    return clock == nullptr ? std::chrono::steady_clock::now() : clock->Now();
}

void SleepFor(std::chrono::milliseconds time) {
    PlayClock* const clock = clockOfTest;
    if (clock == nullptr) {
        std::this_thread::sleep_for(time);
    } else {
        clock->SleepFor(time);
    }
}

void SetPlayClock(PlayClock* clock) {
    clockOfTest = clock;
}

}  // namespace hullrider
