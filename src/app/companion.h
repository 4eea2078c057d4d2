// The companion game: where it is installed, and what the player writes into its folder. UI thread.
#pragma once

#include <string>

#include "state/app_state.h"

namespace hullrider {

#ifdef HULLRIDER_COMPANION_EDITION
inline constexpr bool kCompanionEdition = true;
#else
inline constexpr bool kCompanionEdition = false;
#endif

// The nearest folder, from `programFolder` upwards, that holds the game's content folder; empty when none does.
std::string FindCompanionGame(const std::string& programFolder);

// Writes the plain-text lists that the game reads into its folder, one entry per line: the songs' paths as
// "MusicLibraryCache.txt", the internet stations' addresses as "InternetStations.txt", the favorites' paths as
// "SongFavs.txt", the music directories as "MusicPaths.txt", the SoundFont folder as "SoundFontsPath.Txt". A failure is
// reported on the error stream. The game's folder must be known.
void WriteCompanionExports(const AppState& app);

// The next three do nothing while the game's folder is unknown.

// Writes the lists and starts the game, with the rights of an administrator. A failure is an error box.
void LaunchCompanionGame(const AppState& app);

// Merges the favorites file in the game's folder, if there is one, and writes the list of all favorites there.
void MergeCompanionFavorites(AppState& app);

// Writes the list of the songs.
void SyncCompanionLibrary(const AppState& app);

// The current item, for the game: lines with title, album, kind and favorite count; empty when nothing plays.
std::string SongInfoText(const AppState& app);

}  // namespace hullrider
