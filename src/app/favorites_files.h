// The favorites' files, each at its place in start-up and shutdown. UI thread.
#pragma once

#include "library/scan.h"
#include "state/app_state.h"

namespace hullrider {

// Loads the player's own favorites, then merges those of the working directory, and marks the library's songs. When
// the player's own file is lost, the marks that the library still has are taken over.
void LoadFavoriteFiles(AppState& app);
void SaveFavoriteFile(const AppState& app);

// For a scan: merges the favorites files that it meets. The songs are marked by MatchFavorites after it.
FavoritesFound FavoritesMerger(AppState& app);

}  // namespace hullrider
