#include "dialogs/favorites_rows.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "library/music_type.h"
#include "library/type_names.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

std::string_view NameOf(std::string_view path) {
    const size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string_view WithoutExtension(std::string_view name) {
    const size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

const char* KindOf(int32_t type) {
    const bool isKnown = type >= kMidi && type <= kTracker;
    return isKnown ? kTypeNames[static_cast<size_t>(type)].one : "Unknown";
}

FavoriteRow RowOf(const FavoriteEntry& entry) {
    const std::string_view path = entry.songPath;
    FavoriteRow row{entry.songPath,
                    std::string(WithoutExtension(NameOf(path))),
                    std::string(NameOf(FolderOf(path))),
                    KindOf(entry.songType),
                    entry.favoriteCount,
                    {-1, -1}};
    if (entry.plistIndex >= 0 && entry.songIndex >= 0) row.position = {entry.plistIndex, entry.songIndex};
    return row;
}

// A row with its sort key, so that each text is converted to lower case only once.
struct SortedRow {
    FavoriteRow row;
    std::string text;
    std::string song;
};

SortedRow Keyed(FavoriteRow row, FavoriteColumn column) {
    std::string song = ToLower(row.song);
    std::string text = column == FavoriteColumn::kAlbum  ? ToLower(row.album)
                       : column == FavoriteColumn::kKind ? row.kind
                                                         : std::string();
    return {std::move(row), std::move(text), std::move(song)};
}

}  // namespace

FavoriteOrder OrderAfterClick(FavoriteOrder order, FavoriteColumn clicked) {
    if (order.column == clicked) return {clicked, !order.isDescending};
    return {clicked, clicked == FavoriteColumn::kCount};
}

std::vector<FavoriteRow> MakeFavoriteRows(const FavoritesState& favorites, FavoriteOrder order) {
    std::vector<SortedRow> sorted;
    sorted.reserve(favorites.list.size());
    for (const FavoriteEntry& entry : favorites.list) sorted.push_back(Keyed(RowOf(entry), order.column));
    const auto isBefore = [order](const SortedRow& a, const SortedRow& b) {
        const bool byCount = order.column == FavoriteColumn::kCount, bySong = order.column == FavoriteColumn::kSong;
        const SortedRow &first = order.isDescending ? b : a, &second = order.isDescending ? a : b;
        if (byCount && a.row.count != b.row.count) return first.row.count < second.row.count;
        if (bySong && a.song != b.song) return first.song < second.song;
        if (a.text != b.text) return first.text < second.text;
        return std::tie(a.song, a.row.path) < std::tie(b.song, b.row.path);
    };
    std::sort(sorted.begin(), sorted.end(), isBefore);
    std::vector<FavoriteRow> rows;
    rows.reserve(sorted.size());
    for (SortedRow& one : sorted) rows.push_back(std::move(one.row));
    return rows;
}

std::string CellText(const FavoriteRow& row, FavoriteColumn column) {
    switch (column) {
        case FavoriteColumn::kSong:
            return row.song;
        case FavoriteColumn::kAlbum:
            return row.IsInLibrary() ? row.album : row.album + " (not in the library)";
        case FavoriteColumn::kKind:
            return row.kind;
        case FavoriteColumn::kCount:
            break;
    }
    return FormatWithThousands(row.count);
}

int FindFavoriteRow(const std::vector<FavoriteRow>& rows, std::string_view text, int start) {
    const std::string wanted = ToLower(text);
    const auto size = static_cast<int>(rows.size());
    for (int step = 0; step < size; ++step) {
        const int at = (std::max(start, 0) + step) % size;
        if (ToLower(rows[static_cast<size_t>(at)].song).starts_with(wanted)) return at;
    }
    return -1;
}

int RowOfFavorite(const std::vector<FavoriteRow>& rows, std::string_view path) {
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const FavoriteRow& row) { return row.path == path; });
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

std::string MergeText(FavoritesLoad load, size_t added) {
    if (load == FavoritesLoad::kUnreadable) return "This is not a favorites file.";
    const std::string part = load == FavoritesLoad::kPartly ? "Part of the file could not be read. " : "";
    return part + FormatWithThousands(static_cast<int64_t>(added)) + " added.";
}

std::string FavoritesSummary(const std::vector<FavoriteRow>& rows) {
    if (rows.empty()) return "There are no favorites yet.";
    const auto away =
        std::count_if(rows.begin(), rows.end(), [](const FavoriteRow& row) { return !row.IsInLibrary(); });
    std::string text = Counted(static_cast<int64_t>(rows.size()), "favorite");
    if (away > 0) text += ", " + FormatWithThousands(away) + " of them not in the library";
    return text;
}

}  // namespace hullrider
