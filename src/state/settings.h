// The user's settings, one field for each key of MusicSettings.json, with the built-in values. Fields carry the keys'
// names. Flags that the file keeps as integers are integers here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hullrider {

struct Settings {
    std::vector<std::string> directoryPaths;  // music directories, UTF-8
    float volumeLevel = 0.5F;                 // 0.0 to 1.0
    int32_t songPlayDurationMin = 45;         // seconds
    int32_t songPlayDurationMax = 110;        // seconds; below 1: songs play whole
    int32_t FADE_DURATION_MS = 8000;
    int32_t rawFav = 50;  // selection weights, relative to each other
    int32_t rawMIDI = 50;
    int32_t rawMP3 = 50;
    int32_t rawTracker = 50;
    int32_t songsBeforeSoundfontChange = 1;  // 0: never

    // Panel colors, 0 to 255 each.
    int32_t textR = 200, textG = 220, textB = 235;
    int32_t bkGrR = 12, bkGrG = 18, bkGrB = 28;
    int32_t songR = 255, songG = 196, songB = 92;

    int32_t windowAlpha = 255;  // 40 to 255, opaque
    float lowVolume = 0.1F;     // 0.0 to 1.0
    float highVolume = 0.8F;
    int32_t useRumble = 1;
    int32_t textureAlpha = 25;
    int32_t useRumbleToggle = 1;
    int32_t rumbleTime = 500;            // ms
    int32_t rumbleTimeToggle = 100;      // ms
    int32_t iSongPlayDurationMin = 60;   // seconds
    int32_t iSongPlayDurationMax = 180;  // seconds
    int32_t randomColorPlayer = 0;
    int32_t borderlessAuto = 0;
    std::string currentBkTextureName = "Leather";
    std::string currentLCDTextureName = "Leather";
    int32_t bkTextureAlpha = 25;
    int32_t historyDepth = 20;  // the last songs that may not repeat; -1: off
    bool versionCheck = true;
    int32_t rawRadio = 20;
    std::vector<std::string> audioBookDirectoryPaths;  // UTF-8
    bool toggleLatchMode = false;
    int32_t toggleLatchDurationMs = 2000;
    int32_t bookPlayDurationMin = 100;  // seconds
    int32_t bookPlayDurationMax = 400;  // seconds
    float playbackSpeedPercent = 0.0F;  // change of an audiobook's speed
    int32_t toggleLatchActiveTimeMs = 2000;

    bool operator==(const Settings&) const = default;
};

}  // namespace hullrider
