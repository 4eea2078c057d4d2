// The volume of a stream. Without loudness following, it is the user's volume. With it, the volume is chosen so that
// the stream sounds as loud as the user wants, up to full volume: first from a short measurement, and again from its
// average loudness 2.5 s later.
//
// A volume outside 0 to 1 is refused with a line on the error stream.
#pragma once

#include <memory>
#include <optional>

#include "state/app_state.h"

namespace hullrider {

// The loudness for a volume; -1 when the volume is refused.
float TargetRmsOf(float volume);

// Takes the settings' volume as the loudness to follow, until a preset is chosen. At start-up.
void TakeVolumeFromSettings(AppState& app);

// The volume that the current item should have; 0 while muted.
float WantedVolume(const AppState& app);

// Fades in a stream that was just started silently. With loudness following, a worker measures it first, unless `rms`
// gives its loudness.
void FadeInToTarget(AppState& app, StreamSlot handle, std::optional<float> rms, int32_t fadeMs);

// Starts a worker that corrects the current stream's volume from its average loudness.
void StartVolumeAdjustment(const std::shared_ptr<VolumeState>& volume, int32_t fadeMs);

// Corrects the volume of an item that began silently, once it has been heard long enough. Due with the poll.
void CorrectVolumeOnceHeard(PlaybackState& playback);

// Applies the settings' volume to the current item at once.
void ApplyVolume(AppState& app);

// Sets and applies the user's volume. False when it is refused.
bool SetVolumeLevel(AppState& app, float volume);

// The volume that the user has set. With loudness following, it stands for a loudness, and the settings' volume is the
// result for the current song.
float UserVolume(const AppState& app);

// The user's volume without a preset: the next run starts with it.
float NormalVolume(const AppState& app);

// Turns loudness following on or off; the user's volume stays.
void SetLoudnessFollowing(AppState& app, bool isOn);

// Silences the player, or ends that. A change of the volume ends it too.
void ToggleMute(AppState& app);

// Steps from the normal volume to the high preset, to the low one, and back to the normal one if toggles are latched,
// otherwise to the high one; the change slides.
void ToggleHighLowVolume(AppState& app);

}  // namespace hullrider
