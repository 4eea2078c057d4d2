#include "playback/volume.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <mutex>
#include <string>
#include <utility>

#include "audio/bass.h"
#include "platform/console.h"
#include "platform/play_clock.h"
#include "platform/worker.h"
#include "playback/fade_out.h"
#include "playback/stream_loudness.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

constexpr float kRmsAtFullVolume = 35000.0F;
constexpr std::chrono::milliseconds kAdjustAfter{2500};
constexpr float kUnmeasuredVolume = 0.1F;
constexpr float kFirstShare = 0.5F;  // of the measured volume: quiet starts of loud songs measure too low
constexpr uint32_t kToggleSlideMs = 1000;
constexpr int32_t kLateSlideMs = 1000;
constexpr int32_t kMuteSlideMs = 100;

bool IsVolume(float volume) {
    return volume >= 0.0F && volume <= 1.0F;
}

std::string Text(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
    return text;
}

// The volume that gives a stream of that loudness the target loudness.
float VolumeFor(float targetRms, float rms) {
    if (std::isnan(rms) || rms == 0.0F) return 1.0F;
    return std::clamp(targetRms / rms, 0.0F, 1.0F);
}

void Slide(StreamSlot handle, float volume, int32_t ms) {
    BASS_ChannelSlideAttribute(handle, BASS_ATTRIB_VOL, volume, static_cast<uint32_t>(std::max(ms, 0)));
}

// A worker must not slide a stream that was replaced meanwhile and is fading out, nor slide one after loudness
// following was turned off or the player was muted.
bool MaySlide(const VolumeState& volume, StreamSlot handle) {
    return !volume.closed && volume.realTimeVolume && !volume.muted && volume.currentHandle == handle;
}

void SlideIfCurrent(const VolumeState& volume, StreamSlot handle, float level, int32_t ms) {
    const std::lock_guard lock(StreamMutex());
    if (MaySlide(volume, handle)) Slide(handle, level, ms);
}

void FadeInMeasured(VolumeState& volume, StreamSlot handle, int32_t fadeMs) {
    float rms = 0.0F;
    if (MeasureRms(volume, handle, rms)) {
        SlideIfCurrent(volume, handle, VolumeFor(volume.targetRms, rms) * kFirstShare, fadeMs / 2);
    } else if (MaySlide(volume, handle)) {
        PrintErrorLine("Valid RMS level not obtained in time.");
        volume.levelUnknown = true;
        SlideIfCurrent(volume, handle, kUnmeasuredVolume, fadeMs / 2);
    }
}

// Prints outside the mutex, as the fade does.
void CorrectVolume(VolumeState& volume, StreamSlot handle, int32_t slideMs) {
    const float average = volume.averageMusicRms, target = volume.targetRms;
    const float level = VolumeFor(target, average);
    {
        const std::lock_guard lock(StreamMutex());
        if (!MaySlide(volume, handle)) return;
        volume.adjustedVolume = level;
        Slide(handle, level, slideMs);
    }
    PrintLine("Adjusting volume. Current average music vol: " + Text(average) + ", User target RMS: " + Text(target) +
              ", Current volume level: " + Text(volume.volumeLevel));
    PrintLine("Volume adjusted. New target volume: " + Text(level));
}

void AdjustVolume(VolumeState& volume, int32_t fadeMs) {
    PrintLine("Volume adjustment thread started, waiting for " + std::to_string(fadeMs / 2) + " ms");
    // The next item would not be measured long enough to be corrected then.
    const StreamSlot handle = volume.currentHandle;
    SleepFor(kAdjustAfter);
    CorrectVolume(volume, handle, fadeMs / 2);
}

void TakePreset(AppState& app) {
    if (app.playback.volumeMode == kNormalVolume) return;
    const float preset = app.playback.volumeMode == kHighVolume ? app.settings.highVolume : app.settings.lowVolume;
    app.playback.volume->targetRms = TargetRmsOf(preset);
}

void SetAttribute(AppState& app, float level) {
    BASS_ChannelSetAttribute(CurrentHandle(app.playback), BASS_ATTRIB_VOL, level);
}

// With loudness following on.
void ApplyFollowedVolume(AppState& app) {
    VolumeState& volume = *app.playback.volume;
    Settings& settings = app.settings;
    if (app.playback.volumeMode == kLowVolume) settings.lowVolume = settings.volumeLevel;
    if (app.playback.volumeMode == kHighVolume) settings.highVolume = settings.volumeLevel;
    TakePreset(app);
    const float average = volume.averageMusicRms;
    const float level = average > 0.0F || std::isnan(average) ? VolumeFor(volume.targetRms, average) : 1.0F;
    if (app.playback.volumeMode == kNormalVolume || !(average > 0.0F)) settings.volumeLevel = level;
    SetAttribute(app, level);
}

void EndMute(VolumeState& volume) {
    const std::lock_guard lock(StreamMutex());
    volume.muted = false;
}

void StartVolumeWorker(std::function<void()> work) {
    if (!StartWorker(std::move(work))) PrintErrorLine("No thread could be started for the volume.");
}

}  // namespace

float TargetRmsOf(float volume) {
    if (IsVolume(volume)) return volume * kRmsAtFullVolume;
    PrintErrorLine("Volume level must be between 0.0 and 1.0");
    return -1.0F;
}

float WantedVolume(const AppState& app) {
    const VolumeState& volume = *app.playback.volume;
    if (volume.muted) return 0.0F;
    if (!volume.realTimeVolume) return app.settings.volumeLevel;
    return VolumeFor(volume.targetRms, volume.averageMusicRms);
}

void TakeVolumeFromSettings(AppState& app) {
    app.playback.volume->targetRms = TargetRmsOf(app.settings.volumeLevel);
}

void FadeInToTarget(AppState& app, StreamSlot handle, std::optional<float> rms, int32_t fadeMs) {
    VolumeState& volume = *app.playback.volume;
    volume.volumeLevel = app.settings.volumeLevel;
    if (!volume.realTimeVolume) {
        Slide(handle, WantedVolume(app), fadeMs);
        return;
    }
    TakePreset(app);
    if (volume.muted) return;
    if (rms) return Slide(handle, VolumeFor(volume.targetRms, *rms) * kFirstShare, fadeMs / 2);
    StartVolumeWorker([volume = app.playback.volume, handle, fadeMs] { FadeInMeasured(*volume, handle, fadeMs); });
}

void StartVolumeAdjustment(const std::shared_ptr<VolumeState>& volume, int32_t fadeMs) {
    StartVolumeWorker([volume, fadeMs] { AdjustVolume(*volume, fadeMs); });
}

void CorrectVolumeOnceHeard(PlaybackState& playback) {
    if (!playback.correctionDue || PlayNow() < *playback.correctionDue) return;
    playback.correctionDue.reset();
    if (playback.volume->realTimeVolume) CorrectVolume(*playback.volume, playback.volume->currentHandle, kLateSlideMs);
}

void ApplyVolume(AppState& app) {
    if (app.playback.volume->realTimeVolume) {
        ApplyFollowedVolume(app);
    } else {
        SetAttribute(app, app.settings.volumeLevel);
    }
    app.playback.volume->volumeLevel = app.settings.volumeLevel;
}

bool SetVolumeLevel(AppState& app, float volume) {
    if (!IsVolume(volume)) {
        PrintErrorLine("Volume level must be between 0.0 and 1.0");
        return false;
    }
    EndMute(*app.playback.volume);
    app.settings.volumeLevel = volume;
    // A volume set during a preset becomes the normal volume.
    if (app.playback.savedVolume >= 0.0F) app.playback.savedVolume = volume;
    if (app.playback.volume->realTimeVolume) TakeVolumeFromSettings(app);
    ApplyVolume(app);
    return true;
}

float UserVolume(const AppState& app) {
    const VolumeState& volume = *app.playback.volume;
    const bool isKnown = volume.realTimeVolume && volume.targetRms >= 0.0F;
    return isKnown ? volume.targetRms / kRmsAtFullVolume : app.settings.volumeLevel;
}

float NormalVolume(const AppState& app) {
    return app.playback.savedVolume >= 0.0F ? app.playback.savedVolume : UserVolume(app);
}

void SetLoudnessFollowing(AppState& app, bool isOn) {
    if (isOn == app.playback.volume->realTimeVolume) return;
    const float volume = UserVolume(app);
    {
        const std::lock_guard lock(StreamMutex());  // a worker may be about to slide
        app.playback.volume->realTimeVolume = isOn;
    }
    SetVolumeLevel(app, std::clamp(volume, 0.0F, 1.0F));
}

void ToggleMute(AppState& app) {
    VolumeState& volume = *app.playback.volume;
    {
        const std::lock_guard lock(StreamMutex());  // a worker may be about to slide
        volume.muted = !volume.muted;
    }
    const bool isMeasured = !volume.realTimeVolume || volume.averageMusicRms > 0.0F;
    Slide(CurrentHandle(app.playback), volume.muted || isMeasured ? WantedVolume(app) : UserVolume(app), kMuteSlideMs);
    if (volume.muted && app.playback.fade->fadeInProgress) Slide(app.playback.fadingStream, 0.0F, kMuteSlideMs);
}

void ToggleHighLowVolume(AppState& app) {
    PlaybackState& playback = app.playback;
    Settings& settings = app.settings;
    EndMute(*playback.volume);
    if (playback.savedVolume < 0.0F) playback.savedVolume = UserVolume(app);
    if (playback.volumeMode == kHighVolume) {
        playback.volumeMode = kLowVolume;
        settings.volumeLevel = settings.lowVolume;
    } else if (playback.volumeMode == kLowVolume && settings.toggleLatchMode) {
        playback.volumeMode = kNormalVolume;
        settings.volumeLevel = playback.savedVolume;
        playback.savedVolume = -1.0F;
    } else {
        playback.volumeMode = kHighVolume;
        settings.volumeLevel = settings.highVolume;
    }
    float level = settings.volumeLevel;
    if (playback.volume->realTimeVolume) {
        VolumeState& volume = *playback.volume;
        volume.targetRms = TargetRmsOf(settings.volumeLevel);
        level = VolumeFor(volume.targetRms, volume.averageMusicRms);
    } else {
        level = settings.volumeLevel = std::clamp(level, 0.0F, 1.0F);
    }
    playback.volume->volumeLevel = settings.volumeLevel;
    BASS_ChannelSlideAttribute(CurrentHandle(playback), BASS_ATTRIB_VOL, level, kToggleSlideMs);
}

}  // namespace hullrider
