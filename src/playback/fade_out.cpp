#include "playback/fade_out.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>

#include "audio/bass.h"

namespace hullrider {

namespace {

// The slide begins with the next block that is mixed, so it ends a little after the clock says.
constexpr std::chrono::milliseconds kSlideMargin{200};

}  // namespace

std::mutex& StreamMutex() {
    static std::mutex mutex;
    return mutex;
}

void FreeStream(StreamSlot& slot) {
    if (slot == 0) return;
    const std::lock_guard lock(StreamMutex());
    BASS_ChannelStop(slot);
    BASS_StreamFree(slot);
    slot = 0;
}

void FadeOutAndFreeStream(const std::shared_ptr<FadeState>& fade, StreamSlot handle, int32_t fadeMs) {
    const uint32_t serial = ++fade->serial;
    const auto finish = [fade, handle, serial] {
        StreamSlot slot = handle;
        FreeStream(slot);
        if (fade->serial == serial) fade->fadeInProgress = false;
    };
    fade->fadeInProgress = true;
    try {
        std::thread([finish, fadeMs] {
            std::this_thread::sleep_for(std::chrono::milliseconds(std::max(fadeMs, 0)) + kSlideMargin);
            finish();
        }).detach();
    } catch (const std::system_error&) {
        finish();  // out of threads: the old song ends without a fade
    }
}

void ForgetFade(FadeState& fade) {
    ++fade.serial;
    fade.fadeInProgress = false;
}

}  // namespace hullrider
