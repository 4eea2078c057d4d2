// How the library of a run begins: with what its cache holds of the run's music folders. A scan brings it up to date.
// UI thread.
#pragma once

#include "app/music_folders.h"
#include "app/player.h"

namespace hullrider {

// Due after every change of the library, of the configured weights or of the stations: counts, and what is kept by path
// finds its songs again.
void Recount(AppState& app);

// The first half of it: due after a change of weights or of the songs' marks.
void RecountSongs(AppState& app);

// Where the music of this run comes from, once the settings are there.
MusicFolders MusicOfRun(const Player& player);

// Loads the cache. The folders are not known yet: they are read with the settings. FillLibrary looks again then.
void LoadLibrary(AppState& app);

// Loads the settings, and recounts by their weights.
void LoadSettingsFile(AppState& app);
void SaveSettingsFile(const AppState& app);  // and the shell's own options

// What these files are to say: the user's own volume, whatever has been made of it for now.
Settings SettingsToKeep(const AppState& app);
ShellOptions OptionsToKeep(const AppState& app);

// Once the settings are there: takes out of the library what the cache had of other folders than those of this run,
// and notes whether there are any. The kinds are mixed when the music comes from some folder of this run, and not when
// it is only left over in the cache.
void FillLibrary(Player& player);

}  // namespace hullrider
