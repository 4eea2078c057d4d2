#include "playback/fade_out.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "audio/bass.h"
#include "platform/console.h"
#include "platform/play_clock.h"
#include "platform/worker.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

// The slide begins with the next mixed block, so it ends a little late.
constexpr milliseconds kSlideMargin{200};

// How soon a worker notices that its fade was cut off. Fades may be set to last days.
constexpr milliseconds kLongestSleep{1000};

// False when the fade was cut off. Pauses do not count.
bool WaitForFade(const FadeState& fade, uint32_t serial, PlayTime begin, int32_t fadeMs) {
    while (!fade.closed && fade.serial == serial) {
        const PlayTime end = begin + milliseconds(fadeMs) + kSlideMargin + milliseconds(fade.pausedMs);
        const PlayTime now = PlayNow();
        if (!fade.paused && now >= end) return true;
        const auto left = std::chrono::ceil<milliseconds>(end - now);
        SleepFor(fade.paused ? kLongestSleep : std::min(left, kLongestSleep));
    }
    return false;
}

void StopAndFree(StreamSlot handle) {
    BASS_ChannelStop(handle);
    BASS_StreamFree(handle);
}

void FinishFade(FadeState& fade, uint32_t serial, StreamSlot handle) {
    {
        const std::lock_guard lock(StreamMutex());
        StopAndFree(handle);
    }
    if (fade.serial == serial) fade.fadeInProgress = false;
}

// Prints outside the mutex: a blocked console must not hold up the window.
void FinishFadeAloud(FadeState& fade, uint32_t serial, StreamSlot handle) {
    PrintLine("Freeing streams. Next stream active: " + std::to_string(fade.nextSlotActive ? 1 : 0));
    const bool wasInProgress = fade.fadeInProgress;
    FinishFade(fade, serial, handle);
    PrintLine("Streams freed. No next song status: " + std::to_string(wasInProgress ? 1 : 0));
    PrintLine("Fade out and free stream process completed.");
}

uint32_t BeginFade(FadeState& fade) {
    fade.paused = false;
    fade.pausedMs = 0;
    return ++fade.serial;
}

}  // namespace

std::mutex& StreamMutex() {
    static std::mutex& mutex = *new std::mutex;  // never destroyed: workers may wait for it while the program ends
    return mutex;
}

void FreeStream(StreamSlot& slot) {
    if (slot == 0) return;
    const std::lock_guard lock(StreamMutex());
    StopAndFree(slot);
    slot = 0;
}

void FadeOutAndFreeStream(const std::shared_ptr<FadeState>& fade, StreamSlot handle, int32_t fadeMs) {
    const uint32_t serial = BeginFade(*fade);
    fade->fadeInProgress = true;
    const bool started = StartWorker([fade, handle, serial, begin = PlayNow(), fadeMs] {
        if (WaitForFade(*fade, serial, begin, fadeMs)) FinishFade(*fade, serial, handle);
    });
    if (!started) FinishFade(*fade, serial, handle);  // the old item ends without a fade
}

void FadeOutAndFreeStreamAuto(const PlaybackState& playback, StreamSlot handle, int32_t fadeMs) {
    const std::shared_ptr<FadeState> fade = playback.fade;
    const std::shared_ptr<VolumeState> volume = playback.volume;
    const uint32_t serial = BeginFade(*fade);
    fade->fadeInProgress = handle != 0;
    const bool started = StartWorker([fade, volume, handle, serial, begin = PlayNow(), fadeMs] {
        const std::string time = std::to_string(fadeMs) + " ms";
        PrintLine("Starting FadeOutAndFreeStreamAuto, full duration: " + time);
        StartVolumeAdjustment(volume, fadeMs);
        PrintLine("Main thread waiting for full fade duration: " + time);
        if (handle != 0 && WaitForFade(*fade, serial, begin, fadeMs)) FinishFadeAloud(*fade, serial, handle);
    });
    if (!started) FinishFade(*fade, serial, handle);
}

void ForgetFade(FadeState& fade) {
    ++fade.serial;
    fade.fadeInProgress = false;
}

}  // namespace hullrider
