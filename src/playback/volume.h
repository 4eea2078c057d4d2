// The volume that a stream is played at. Without loudness following it is the user's volume. With it, the volume is
// chosen so that the stream comes out as loud as the user wants, at most at full volume: roughly as soon as the stream
// was measured, and again from its average loudness 2.5 s later.
//
// Every volume outside 0 to 1 is refused with a line on the error stream.
#pragma once

#include <memory>
#include <optional>

#include "state/app_state.h"

namespace hullrider {

// The loudness that belongs to a volume; -1 when the volume is refused.
float TargetRmsOf(float volume);

// The settings' volume becomes the loudness to follow, until a preset is chosen. At start-up.
void TakeVolumeFromSettings(AppState& app);

// The volume that what plays should have by now.
float WantedVolume(const AppState& app);

// Fades in a stream that was just started, silent. With loudness following it is measured before, on a worker, unless
// `rms` tells how loud it is.
void FadeInToTarget(AppState& app, StreamSlot handle, std::optional<float> rms, int32_t fadeMs);

// Starts the correction of the current stream from its average loudness, on a worker.
void StartVolumeAdjustment(const std::shared_ptr<VolumeState>& volume, int32_t fadeMs);

// Corrects the volume of an item that was silent at first, when it has been heard for long enough. Due with the poll.
void CorrectVolumeOnceHeard(PlaybackState& playback);

// Makes the settings' volume heard at once on what plays.
void ApplyVolume(AppState& app);

// Sets and applies the user's volume. False when it is refused.
bool SetVolumeLevel(AppState& app, float volume);

// The volume that the user has set. With loudness following it stands for a loudness, and the settings' volume is what
// that comes to for the song that plays.
float UserVolume(const AppState& app);

// The user's volume when no preset is on: what the next start begins with.
float NormalVolume(const AppState& app);

// Turns loudness following on or off; the user's volume stays.
void SetLoudnessFollowing(AppState& app, bool isOn);

// From the normal volume to the high preset, to the low one, and back to the normal one if toggles are latched, else to
// the high one again; the change slides.
void ToggleHighLowVolume(AppState& app);

}  // namespace hullrider
