// The favorites: a list by path, and the marks of the songs, which these functions keep in step with it. Paths that
// differ only in the case of ASCII letters are one favorite, and every song of the library at such a path has its
// mark. After a change of marks the caller recounts. UI thread.
#pragma once

#include <string>
#include <vector>

#include "library/song_counts.h"
#include "state/favorites.h"
#include "state/music_library.h"

namespace hullrider {

bool IsSameFavorite(const FavoriteEntry& a, const FavoriteEntry& b);

// Appends the entries that the list does not hold yet, the first of those that are the same. An entry that is there
// keeps its own count, so that merging twice is merging once.
void MergeFavorites(FavoritesState& favorites, const std::vector<FavoriteEntry>& entries);

// Appends the library's songs that are marked, by either of their two fields.
void AdoptFavorites(FavoritesState& favorites, const MusicLibrary& library);

// Marks the songs that the list names and no others, and finds the entries' places in the library. Due after every
// load, scan and merge.
void MatchFavorites(FavoritesState& favorites, MusicLibrary& library);

// Gives a song that count. With 0 or less it is no favorite any more. A position that the library does not have
// changes nothing.
void SetFavoriteCount(FavoritesState& favorites, MusicLibrary& library, SongPosition position, int32_t count);

// The same for the favorite at that path, whether it is in the library now or not. A path that is none changes
// nothing.
void SetFavoriteCountAt(FavoritesState& favorites, MusicLibrary& library, const std::string& path, int32_t count);

// No song is a favorite any more, whether it is in the library now or not.
void ClearFavorites(FavoritesState& favorites, MusicLibrary& library);

}  // namespace hullrider
