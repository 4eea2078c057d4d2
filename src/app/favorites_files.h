// Loads and saves the favorites files during start-up and shutdown. UI thread.
#pragma once

#include "library/scan.h"
#include "state/app_state.h"

namespace hullrider {

// Loads the player's own favorites, then merges those of the working directory, and marks the library's songs. If the
// player's own file is unreadable, the favorites are restored from the library's marks.
void LoadFavoriteFiles(AppState& app);
void SaveFavoriteFile(const AppState& app);

// For a scan: merges each favorites file that it finds. Call MatchFavorites afterwards to mark the songs.
FavoritesFound FavoritesMerger(AppState& app);

}  // namespace hullrider
