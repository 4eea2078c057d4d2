#include "app/favorites_files.h"

#include "library/favorites.h"
#include "library/favorites_file.h"
#include "platform/paths.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

std::string FavoritesPath(const AppState& state) {
    return StatePath(state.shell.dataDirectory, kFavoritesFile);
}

}  // namespace

void LoadFavoriteFiles(AppState& state) {
    const FavoritesLoad load = LoadOwnFavorites(FavoritesPath(state), state.favorites);
    // Only then: a song that the user has taken out of the list may still be marked in a library cache of before.
    if (load == FavoritesLoad::kUnreadable) AdoptFavorites(state.favorites, state.library);
    LoadFavorites(kFavoritesFile, state.favorites);
    MatchFavorites(state.favorites, state.library);
}

void SaveFavoriteFile(const AppState& state) {
    SaveFavorites(FavoritesPath(state), state.favorites);
}

FavoritesFound FavoritesMerger(AppState& state) {
    return [&state](const std::string& path) { LoadFavorites(path, state.favorites); };
}

}  // namespace hullrider
