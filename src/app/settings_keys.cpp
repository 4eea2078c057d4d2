#include "app/settings_keys.h"

#include <array>

namespace hullrider {

namespace {

constexpr WholeNumberField WholeNumber(int32_t Settings::*member) {
    return {member};
}
constexpr WholeNumberField NotNegative(int32_t Settings::*member) {
    return {member, 0};
}
constexpr WholeNumberField Byte(int32_t Settings::*member, int32_t lowest = 0) {
    return {member, lowest, 255};
}
constexpr NumberField Volume(float Settings::*member) {
    return {member, 0.0F, 1.0F};
}

// Below this alpha the user might not find the window again.
constexpr int32_t kFaintestWindow = 40;

using S = Settings;

constexpr std::array<SettingsKey, 38> kRequired{{
    {"directoryPaths", &S::directoryPaths},
    {"volumeLevel", Volume(&S::volumeLevel)},
    {"songPlayDurationMin", NotNegative(&S::songPlayDurationMin)},
    {"songPlayDurationMax", WholeNumber(&S::songPlayDurationMax)},
    {"FADE_DURATION_MS", NotNegative(&S::FADE_DURATION_MS)},
    {"rawFav", WholeNumber(&S::rawFav)},
    {"rawMIDI", WholeNumber(&S::rawMIDI)},
    {"rawMP3", WholeNumber(&S::rawMP3)},
    {"rawTracker", WholeNumber(&S::rawTracker)},
    {"songsBeforeSoundfontChange", NotNegative(&S::songsBeforeSoundfontChange)},
    {"textR", Byte(&S::textR)},
    {"textG", Byte(&S::textG)},
    {"textB", Byte(&S::textB)},
    {"bkGrR", Byte(&S::bkGrR)},
    {"bkGrG", Byte(&S::bkGrG)},
    {"bkGrB", Byte(&S::bkGrB)},
    {"songR", Byte(&S::songR)},
    {"songG", Byte(&S::songG)},
    {"songB", Byte(&S::songB)},
    {"windowAlpha", Byte(&S::windowAlpha, kFaintestWindow)},
    {"lowVolume", Volume(&S::lowVolume)},
    {"highVolume", Volume(&S::highVolume)},
    {"useRumble", WholeNumber(&S::useRumble)},
    {"textureAlpha", Byte(&S::textureAlpha)},
    {"useRumbleToggle", WholeNumber(&S::useRumbleToggle)},
    {"rumbleTime", NotNegative(&S::rumbleTime)},
    {"rumbleTimeToggle", NotNegative(&S::rumbleTimeToggle)},
    {"iSongPlayDurationMin", NotNegative(&S::iSongPlayDurationMin)},
    {"iSongPlayDurationMax", NotNegative(&S::iSongPlayDurationMax)},
    {"randomColorPlayer", WholeNumber(&S::randomColorPlayer)},
    {"borderlessAuto", WholeNumber(&S::borderlessAuto)},
    {"currentBkTextureName", &S::currentBkTextureName},
    {"currentLCDTextureName", &S::currentLCDTextureName},
    {"bkTextureAlpha", Byte(&S::bkTextureAlpha)},
    {"historyDepth", WholeNumberField{&S::historyDepth, -1}},
    {"versionCheck", &S::versionCheck},
    {"rawRadio", WholeNumber(&S::rawRadio)},
    {"audioBookDirectoryPaths", &S::audioBookDirectoryPaths},
}};

constexpr std::array<SettingsKey, 6> kOptional{{
    {"toggleLatchMode", &S::toggleLatchMode},
    {"toggleLatchDurationMs", NotNegative(&S::toggleLatchDurationMs)},
    {"bookPlayDurationMin", NotNegative(&S::bookPlayDurationMin)},
    {"bookPlayDurationMax", NotNegative(&S::bookPlayDurationMax)},
    {"playbackSpeedPercent", NumberField{&S::playbackSpeedPercent}},
    {"toggleLatchActiveTimeMs", NotNegative(&S::toggleLatchActiveTimeMs)},
}};

}  // namespace

std::span<const SettingsKey> RequiredSettingsKeys() {
    return kRequired;
}
std::span<const SettingsKey> OptionalSettingsKeys() {
    return kOptional;
}

}  // namespace hullrider
