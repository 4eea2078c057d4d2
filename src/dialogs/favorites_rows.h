// What the favorites window shows: one row for each favorite, in the order that the user has chosen. Pure; UI thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "library/favorites_file.h"
#include "library/song_counts.h"
#include "state/favorites.h"

namespace hullrider {

struct FavoriteRow {
    std::string path;  // identifies the favorite
    std::string song;  // the file's name without its extension
    std::string album;
    std::string kind;
    int32_t count = 1;
    SongPosition position{-1, -1};  // -1: not in the library

    bool IsInLibrary() const { return position.playlist >= 0; }
};

// In the order of the columns.
enum class FavoriteColumn { kSong, kAlbum, kKind, kCount };

struct FavoriteOrder {
    FavoriteColumn column = FavoriteColumn::kCount;
    bool isDescending = true;
};

// The order after a click on a column's heading: by that column, reversed if it already was.
FavoriteOrder OrderAfterClick(FavoriteOrder order, FavoriteColumn clicked);

// Rows with the same value in the column are sorted by song name.
std::vector<FavoriteRow> MakeFavoriteRows(const FavoritesState& favorites, FavoriteOrder order);

std::string CellText(const FavoriteRow& row, FavoriteColumn column);

// The first row, from `start` on with wrap-around, whose song name begins with the text, ignoring case; -1: none.
int FindFavoriteRow(const std::vector<FavoriteRow>& rows, std::string_view text, int start);

// The row of that path, -1: none.
int RowOfFavorite(const std::vector<FavoriteRow>& rows, std::string_view path);

// The result of merging a file that has added `added` favorites to the list.
std::string MergeText(FavoritesLoad load, size_t added);

// "12 favorites, 2 of them not in the library".
std::string FavoritesSummary(const std::vector<FavoriteRow>& rows);

}  // namespace hullrider
