#include "playback/cross_fade.h"

#include <algorithm>
#include <array>
#include <mutex>

#include "audio/bass.h"
#include "platform/play_clock.h"
#include "playback/fade_out.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

std::array<StreamSlot, 2> BothItems(const PlaybackState& playback) {
    return {CurrentHandle(playback), playback.fade->fadeInProgress ? playback.fadingStream : 0};
}

// Stops a slide at the volume reached.
void HoldVolume(StreamSlot handle) {
    float volume = 0.0F;
    if (BASS_ChannelGetAttribute(handle, BASS_ATTRIB_VOL, &volume)) {
        BASS_ChannelSetAttribute(handle, BASS_ATTRIB_VOL, volume);
    }
}

milliseconds MillisecondsUntil(PlayTime time) {
    return std::max(std::chrono::duration_cast<milliseconds>(time - PlayNow()), milliseconds(0));
}

}  // namespace

OldItem LookAtOldItem(const PlaybackState& playback) {
    OldItem old{CurrentHandle(playback), playback.fade->fadeInProgress};
    if (old.handle == 0 || BASS_ChannelIsActive(old.handle) == BASS_ACTIVE_PAUSED) return old;
    const double lengthSec = playback.item.hasLength ? LengthSec(old.handle) : 0.0;
    if (lengthSec > 0.0) old.leftSec = std::max(lengthSec - PositionSec(old.handle), 0.0);
    if (BASS_ChannelIsActive(old.handle) == BASS_ACTIVE_STOPPED) old.leftSec = -1.0;
    return old;
}

int32_t FadeMsFor(int32_t setMs, const PlayWindow& window, const OldItem& old) {
    double fadeMs = std::max(setMs, 0);
    fadeMs = std::min(fadeMs, (window.endSec - window.startSec) * 1000.0 / 2.0);
    if (old.leftSec >= 0.0 && !old.isCutOff) fadeMs = std::min(fadeMs, old.leftSec * 1000.0);
    return static_cast<int32_t>(std::max(fadeMs, 0.0));
}

void LetOldItemGo(PlaybackState& playback, const OldItem& old, int32_t fadeMs) {
    {
        const std::lock_guard lock(StreamMutex());
        playback.volume->currentHandle = 0;  // so that no volume worker slides it up again
    }
    playback.fadeEnds = PlayNow() + milliseconds(fadeMs);
    playback.fadeLeft = {};
    playback.fadingStream = old.isCutOff ? 0 : old.handle;
    if (old.isCutOff) {
        StopAllStreams(playback);
    } else if (old.handle != 0) {
        BASS_ChannelSlideAttribute(old.handle, BASS_ATTRIB_VOL, 0.0F, static_cast<uint32_t>(fadeMs));
    }
}

void FreeOldItem(PlaybackState& playback, const OldItem& old, StreamSlot newHandle, int32_t fadeMs) {
    if (old.isCutOff) {
        CutStreamsBut(playback, newHandle);
        ForgetFade(*playback.fade);
        if (playback.volume->realTimeVolume) StartVolumeAdjustment(playback.volume, fadeMs);
    } else if (playback.volume->realTimeVolume) {
        FadeOutAndFreeStreamAuto(playback, old.handle, fadeMs);
    } else if (old.handle != 0) {
        FadeOutAndFreeStream(playback.fade, old.handle, fadeMs);
    }
}

void PauseAll(PlaybackState& playback) {
    playback.fadeLeft = MillisecondsUntil(playback.fadeEnds);
    playback.pausedAt = PlayNow();
    playback.fade->paused = true;
    for (const StreamSlot handle : BothItems(playback)) {
        if (handle == 0) continue;
        if (playback.fadeLeft.count() > 0) HoldVolume(handle);
        BASS_ChannelPause(handle);
    }
}

void ResumeAll(AppState& app) {
    PlaybackState& playback = app.playback;
    const milliseconds left = playback.fadeLeft;
    const auto slideMs = static_cast<uint32_t>(left.count());
    const auto [current, fading] = BothItems(playback);
    if (left.count() > 0) BASS_ChannelSlideAttribute(current, BASS_ATTRIB_VOL, WantedVolume(app), slideMs);
    BASS_ChannelPlay(current, false);
    if (fading != 0 && fading != current) {
        BASS_ChannelSlideAttribute(fading, BASS_ATTRIB_VOL, 0.0F, slideMs);
        BASS_ChannelPlay(fading, false);
    }
    playback.fadeEnds = PlayNow() + left;
    playback.fade->pausedMs += std::chrono::duration_cast<milliseconds>(PlayNow() - playback.pausedAt).count();
    playback.fade->paused = false;
}

}  // namespace hullrider
