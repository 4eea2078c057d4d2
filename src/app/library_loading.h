// How the library of a run comes about: from its cache, from the music folders, or from what was given for this run. UI
// thread.
#pragma once

#include <string>
#include <vector>

#include "app/player.h"

namespace hullrider {

// Due after every change of the library, of the configured weights or of the stations: counts, and what is kept by path
// finds its songs again.
void Recount(AppState& state);

// The first half of it: due after a change of weights or of the songs' marks.
void RecountSongs(AppState& state);

// Replaces the library by what the directories hold, and saves its cache.
void RescanAndRecount(AppState& state, const std::vector<std::string>& directories);

// Loads the cache. The folders are not known yet: they are read with the settings. FillLibrary looks again then.
void LoadLibrary(AppState& state);

// Loads the settings, and recounts by their weights.
void LoadSettingsFile(AppState& state);
void SaveSettingsFile(const AppState& state);  // and the shell's own options

// Brings the library up to date once the settings are there, and notes whether there are music folders: the kinds are
// mixed when the music comes from some folder of this run, and not when it is only left over in the cache.
void FillLibrary(Player& player);

}  // namespace hullrider
