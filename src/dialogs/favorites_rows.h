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
    std::string path;  // which favorite it is
    std::string song;  // the file's name without its extension
    std::string album;
    std::string kind;
    int32_t count = 1;
    SongPosition position{-1, -1};  // in the library; -1: it is not in there

    bool IsInLibrary() const { return position.playlist >= 0; }
};

// In the order of the columns.
enum class FavoriteColumn { kSong, kAlbum, kKind, kCount };

struct FavoriteOrder {
    FavoriteColumn column = FavoriteColumn::kCount;
    bool isDescending = true;
};

// After a click on a column's heading: by that column, and the other way round when it was that one already.
FavoriteOrder OrderAfterClick(FavoriteOrder order, FavoriteColumn clicked);

// Rows that are alike in the column are in the order of their songs' names.
std::vector<FavoriteRow> MakeFavoriteRows(const FavoritesState& favorites, FavoriteOrder order);

std::string CellText(const FavoriteRow& row, FavoriteColumn column);

// The next row, from `start` on and round again, whose song's name begins with the text in any case; -1: none.
int FindFavoriteRow(const std::vector<FavoriteRow>& rows, std::string_view text, int start);

// The row of that path, -1: none.
int RowOfFavorite(const std::vector<FavoriteRow>& rows, std::string_view path);

// What came of merging a file that had `added` favorites which the list lacked.
std::string MergeText(FavoritesLoad load, size_t added);

// "12 favorites, 2 of them not in the library".
std::string FavoritesSummary(const std::vector<FavoriteRow>& rows);

}  // namespace hullrider
