#include "app/favorites_files.h"

#include "library/favorites.h"
#include "library/favorites_file.h"
#include "platform/paths.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

std::string FavoritesPath(const AppState& app) {
    return StatePath(app.shell.dataDirectory, kFavoritesFile);
}

}  // namespace

void LoadFavoriteFiles(AppState& app) {
    const FavoritesLoad load = LoadOwnFavorites(FavoritesPath(app), app.favorites);
    // Only then: an older library cache may still mark songs that the user has removed from the list.
    if (load == FavoritesLoad::kUnreadable) AdoptFavorites(app.favorites, app.library);
    LoadFavorites(kFavoritesFile, app.favorites);
    MatchFavorites(app.favorites, app.library);
}

void SaveFavoriteFile(const AppState& app) {
    SaveFavorites(FavoritesPath(app), app.favorites);
}

FavoritesFound FavoritesMerger(AppState& app) {
    return [&app](const std::string& path) { LoadFavorites(path, app.favorites); };
}

}  // namespace hullrider
