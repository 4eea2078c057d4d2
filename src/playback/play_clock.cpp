#include "playback/play_clock.h"

#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

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

bool StartWorker(std::function<void()> work) {
    PlayClock* const clock = clockOfTest;
    if (clock != nullptr) clock->OnWorkerStart();
    try {
        std::thread([clock, work = std::move(work)] {
            work();
            if (clock != nullptr) clock->OnWorkerEnd();
        }).detach();
        return true;
    } catch (const std::system_error&) {
        if (clock != nullptr) clock->OnWorkerEnd();
        return false;
    }
}

void SetPlayClock(PlayClock* clock) {
    clockOfTest = clock;
}

}  // namespace hullrider
