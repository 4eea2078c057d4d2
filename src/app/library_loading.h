// Loads the settings, and the library from the cached music of the run's folders. A scan brings it up to date. UI
// thread.
#pragma once

#include "app/music_folders.h"
#include "app/player.h"

namespace hullrider {

// Call after every change of the library, the configured weights or the stations: counts the songs, and matches play
// counts and history with them by path.
void Recount(AppState& app);

// Only counts. Call after a change of weights or of the songs' marks.
void RecountSongs(AppState& app);

// Where the music of this run comes from. Needs the settings.
MusicFolders MusicOfRun(const Player& player);

// Loads the cache. The settings name the folders and are loaded later; then call FillLibrary.
void LoadLibrary(AppState& app);

// Loads the settings and recounts with their weights.
void LoadSettingsFile(AppState& app);
void SaveSettingsFile(const AppState& app);  // and the shell options

// What these files save: the volume without a preset.
Settings SettingsToKeep(const AppState& app);
ShellOptions OptionsToKeep(const AppState& app);

// After the settings are loaded: drops the cached music of folders outside this run. Types are mixed when the run has
// folders, and not when its music is only left over in the cache.
void FillLibrary(Player& player);

}  // namespace hullrider
