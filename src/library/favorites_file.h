// "favorite.json": a JSON object with the list "favorites", each an object with "songType" (0 MIDI, 1 audio file, 2
// tracker module), "songIndex" and "plistIndex" (its place in the library when the file was written), "favoriteCount"
// and "songPath". UI thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "state/favorites.h"

namespace hullrider {

enum class FavoritesLoad {
    kWhole,
    kPartly,      // some of it could not be used; the rest was
    kUnreadable,  // the file is missing or is not a favorites file
};

// Merges a favorites file of any origin into the list. What could not be read is one line on the error stream. The file
// is not changed.
FavoritesLoad LoadFavorites(const std::string& path, FavoritesState& favorites);

// The same for the player's own file, whose counts override those merged earlier. A file that was not fully understood
// is kept as "PATH.bad", because the next save replaces it.
FavoritesLoad LoadOwnFavorites(const std::string& path, FavoritesState& favorites);

// Writes the whole list, replacing the file. False, with a line on the error stream, when that failed.
bool SaveFavorites(const std::string& path, const FavoritesState& favorites);

struct FavoritesReading {
    std::vector<FavoriteEntry> entries;
    bool isFavorites = false;  // the text holds a list of favorites
    size_t dropped = 0;        // elements that name no song
    std::string error;         // why the text is not JSON or has no such list; entries before an error are good
};

// The same on the file's text. Pure. An element must have a path. A missing type is derived from the path; a missing
// count, or 0, becomes 1. Takes no more memory than a few times the text's size.
FavoritesReading ReadFavorites(std::string_view text);
std::string FavoritesText(const std::vector<FavoriteEntry>& list);

}  // namespace hullrider
