#include "playback/fade_out.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "audio/bass.h"
#include "platform/console.h"
#include "playback/play_clock.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

// The slide begins with the next block that is mixed, so it ends a little after the clock says.
constexpr milliseconds kSlideMargin{200};

// How soon a worker notices that its fade was cut off. Fades can be set to days.
constexpr milliseconds kLongestSleep{1000};

// False when the fade was cut off meanwhile.
bool WaitForFade(const FadeState& fade, uint32_t serial, int32_t fadeMs) {
    for (milliseconds left = milliseconds(fadeMs) + kSlideMargin; left.count() > 0; left -= kLongestSleep) {
        if (fade.closed || fade.serial != serial) return false;
        SleepFor(std::min(left, kLongestSleep));
    }
    return !fade.closed && fade.serial == serial;
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

void FinishFadeAloud(FadeState& fade, uint32_t serial, StreamSlot handle) {
    {
        const std::lock_guard lock(StreamMutex());
        PrintLine("Freeing streams. Next stream active: " + std::to_string(fade.nextSlotActive ? 1 : 0));
        StopAndFree(handle);
        PrintLine("Streams freed. No next song status: " + std::to_string(fade.fadeInProgress ? 1 : 0));
    }
    if (fade.serial == serial) fade.fadeInProgress = false;
    PrintLine("Fade out and free stream process completed.");
}

}  // namespace

std::mutex& StreamMutex() {
    static std::mutex& mutex = *new std::mutex;  // workers may wait for it while the program ends
    return mutex;
}

void FreeStream(StreamSlot& slot) {
    if (slot == 0) return;
    const std::lock_guard lock(StreamMutex());
    StopAndFree(slot);
    slot = 0;
}

void FadeOutAndFreeStream(const std::shared_ptr<FadeState>& fade, StreamSlot handle, int32_t fadeMs) {
    const uint32_t serial = ++fade->serial;
    fade->fadeInProgress = true;
    const bool started = StartWorker([fade, handle, serial, fadeMs] {
        if (WaitForFade(*fade, serial, std::max(fadeMs, 0))) FinishFade(*fade, serial, handle);
    });
    if (!started) FinishFade(*fade, serial, handle);  // the old item ends without a fade
}

void FadeOutAndFreeStreamAuto(const PlaybackState& playback, StreamSlot handle, int32_t fadeMs) {
    const std::shared_ptr<FadeState> fade = playback.fade;
    const std::shared_ptr<VolumeState> volume = playback.volume;
    const uint32_t serial = ++fade->serial;
    fade->fadeInProgress = handle != 0;
    const bool started = StartWorker([fade, volume, handle, serial, fadeMs] {
        const std::string time = std::to_string(fadeMs) + " ms";
        PrintLine("Starting FadeOutAndFreeStreamAuto, full duration: " + time);
        StartVolumeAdjustment(volume, fadeMs);
        PrintLine("Main thread waiting for full fade duration: " + time);
        if (handle != 0 && WaitForFade(*fade, serial, std::max(fadeMs, 0))) FinishFadeAloud(*fade, serial, handle);
    });
    if (!started) FinishFade(*fade, serial, handle);
}

void ForgetFade(FadeState& fade) {
    ++fade.serial;
    fade.fadeInProgress = false;
}

}  // namespace hullrider
