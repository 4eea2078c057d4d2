// The favorites: a list by path, and the marks of the songs, which these functions keep in step with it. Paths that
// differ only in the case of ASCII letters are one favorite, and every song of the library at such a path carries its
// mark. After a change of marks the caller recounts. UI thread.
#pragma once

#include <string>
#include <vector>

#include "library/song_counts.h"
#include "state/favorites.h"
#include "state/music_library.h"

namespace hullrider {

bool IsSameFavorite(const FavoriteEntry& a, const FavoriteEntry& b);

// Appends the entries that the list does not hold yet. Existing entries keep their counts, and of equal new ones the
// first is taken, so that merging twice is the same as merging once.
void MergeFavorites(FavoritesState& favorites, const std::vector<FavoriteEntry>& entries);

// Appends the library's songs that are marked by either of their two fields.
void AdoptFavorites(FavoritesState& favorites, const MusicLibrary& library);

// Marks exactly the songs that the list names and finds the entries' places in the library. Due after every load, scan
// and merge.
void MatchFavorites(FavoritesState& favorites, MusicLibrary& library);

// Sets a song's count. At 0 or less it is not a favorite any more. An invalid position changes nothing.
void SetFavoriteCount(FavoritesState& favorites, MusicLibrary& library, SongPosition position, int32_t count);

// The same for the favorite at that path, whether or not it is in the library. A path that is not a favorite's changes
// nothing.
void SetFavoriteCountAt(FavoritesState& favorites, MusicLibrary& library, const std::string& path, int32_t count);

// Removes every favorite, whether or not it is in the library.
void ClearFavorites(FavoritesState& favorites, MusicLibrary& library);

}  // namespace hullrider
