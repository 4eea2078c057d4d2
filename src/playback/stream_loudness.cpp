#include "playback/stream_loudness.h"

#include <algorithm>
#include <cmath>

#include "audio/bass.h"
#include "platform/console.h"
#include "platform/play_clock.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kMeasureStep{50};
constexpr milliseconds kLongestMeasure{1500};
constexpr int kMeasuredLevels = 10;

constexpr double kTimeConstantSec = 3.0;

constexpr milliseconds kPromptSound{500};
constexpr milliseconds kHeardFor{2500};

}  // namespace

std::optional<float> CurrentRms(StreamSlot handle) {
    const uint32_t level = BASS_ChannelGetLevel(handle);
    if (level == BASS_LEVEL_ERROR) return std::nullopt;
    const auto left = static_cast<float>(level & 0xFFFF);
    const auto right = static_cast<float>(level >> 16);
    return std::sqrt((left * left + right * right) * 0.5F);
}

bool MeasureRms(const VolumeState& volume, StreamSlot handle, float& value) {
    const PlayTime start = PlayNow();
    float sum = 0.0F;
    int taken = 0;
    while (taken < kMeasuredLevels && PlayNow() - start < kLongestMeasure) {
        if (volume.closed || volume.currentHandle != handle) return false;
        const std::optional<float> rms = CurrentRms(handle);
        if (!rms) PrintErrorLine("Error retrieving channel level. Channel might be stalled or not playing.");
        if (rms && *rms > 0.0F) {
            sum += *rms;
            ++taken;
        }
        SleepFor(kMeasureStep);
    }
    if (taken == 0) return false;
    value = sum / static_cast<float>(taken);
    return true;
}

void SampleLoudness(PlaybackState& playback) {
    VolumeState& volume = *playback.volume;
    const StreamSlot handle = volume.currentHandle;
    if (handle == 0 || BASS_ChannelIsActive(handle) != BASS_ACTIVE_PLAYING) return;
    const std::optional<float> rms = CurrentRms(handle);
    const bool hasBegun = playback.levelsTaken > 0 || (rms && *rms > 0.0F);
    if (!rms || !hasBegun) return;
    const PlayTime now = PlayNow();
    // The item began silently, so the workers measured only silence.
    if (playback.levelsTaken == 0 && now - playback.lastLevel > kPromptSound) playback.correctionDue = now + kHeardFor;
    const std::chrono::duration<double> since = now - playback.lastLevel;
    playback.lastLevel = now;
    playback.levelsTaken = std::min(playback.levelsTaken + 1, 1'000'000);
    const double share = std::max(1.0 - std::exp(-since.count() / kTimeConstantSec), 1.0 / playback.levelsTaken);
    const float average = volume.averageMusicRms;
    volume.averageMusicRms = average + (*rms - average) * static_cast<float>(std::clamp(share, 0.0, 1.0));
}

void RestartLoudness(PlaybackState& playback, StreamSlot handle) {
    playback.levelsTaken = 0;
    playback.lastLevel = PlayNow();
    playback.correctionDue.reset();
    playback.volume->averageMusicRms = 0.0F;
    playback.volume->levelUnknown = false;
    playback.volume->currentHandle = handle;
}

}  // namespace hullrider
