#include "dialogs/favorites_rows.h"

#include <gtest/gtest.h>

#include "library/favorites.h"

namespace hullrider {
namespace {

FavoritesState SomeFavorites() {
    FavoritesState favorites;
    MergeFavorites(favorites, {{kMp3, 4, 7, 2, "C:\\Music\\Zoo\\beta.take.2.mp3"},
                               {kMidi, -1, -1, 9, "C:\\Music\\Ark\\Alpha.mid"},
                               {kTracker, 0, 0, 2, "/music/Old/alpha.xm"},
                               {kMp3, 1, 0, 2, "loose"}});
    return favorites;
}

std::string Songs(const std::vector<FavoriteRow>& rows) {
    std::string songs;
    for (const FavoriteRow& row : rows) songs += row.song + ' ';
    return songs;
}

TEST(FavoritesRows, AreInTheOrderOfTheChosenColumnAndThenOfTheNames) {
    const struct {
        FavoriteOrder order;
        const char* songs;
    } cases[] = {{{}, "Alpha alpha beta.take.2 loose "},
                 {{FavoriteColumn::kCount, false}, "alpha beta.take.2 loose Alpha "},
                 {{FavoriteColumn::kSong, true}, "loose beta.take.2 alpha Alpha "},
                 {{FavoriteColumn::kAlbum, false}, "loose Alpha alpha beta.take.2 "},
                 {{FavoriteColumn::kKind, true}, "alpha Alpha beta.take.2 loose "}};
    for (const auto& [order, songs] : cases) {
        EXPECT_EQ(Songs(MakeFavoriteRows(SomeFavorites(), order)), songs) << static_cast<int>(order.column);
    }
    FavoriteOrder order = OrderAfterClick({}, FavoriteColumn::kSong);
    EXPECT_FALSE(order.isDescending);
    order = OrderAfterClick(order, FavoriteColumn::kSong);
    EXPECT_TRUE(order.isDescending);
    EXPECT_TRUE(OrderAfterClick(order, FavoriteColumn::kCount).isDescending) << "the most first";
}

TEST(FavoritesRows, SayWhatAFavoriteIsAndWhetherItCanBePlayed) {
    const std::vector<FavoriteRow> rows = MakeFavoriteRows(SomeFavorites(), {});
    EXPECT_FALSE(rows[0].IsInLibrary());
    EXPECT_EQ(CellText(rows[0], FavoriteColumn::kAlbum), "Ark (not in the library)");
    EXPECT_EQ(CellText(rows[0], FavoriteColumn::kCount), "9");
    EXPECT_EQ(CellText(rows[1], FavoriteColumn::kAlbum), "Old");
    EXPECT_EQ(CellText(rows[1], FavoriteColumn::kKind), "Tracker module");
    EXPECT_EQ(rows[2].position.playlist, 7);
    EXPECT_EQ(rows[2].position.song, 4);
    EXPECT_EQ(FavoritesSummary(rows), "4 favorites, 1 of them not in the library");
    EXPECT_EQ(RowOfFavorite(rows, "loose"), 3);
    EXPECT_EQ(RowOfFavorite(rows, "gone"), -1);
    EXPECT_EQ(MergeText(FavoritesLoad::kWhole, 1234), "1,234 added.");
    EXPECT_EQ(MergeText(FavoritesLoad::kPartly, 2), "Part of the file could not be read. 2 added.");
    EXPECT_EQ(MergeText(FavoritesLoad::kUnreadable, 0), "This is not a favorites file.");
}

TEST(FavoritesRows, AreFoundByTheBeginningOfTheName) {
    const std::vector<FavoriteRow> rows = MakeFavoriteRows(SomeFavorites(), {});
    EXPECT_EQ(FindFavoriteRow(rows, "AL", 0), 0);
    EXPECT_EQ(FindFavoriteRow(rows, "al", 1), 1);
    EXPECT_EQ(FindFavoriteRow(rows, "al", 2), 0) << "round again";
    EXPECT_EQ(FindFavoriteRow(rows, "x", 0), -1);
    EXPECT_EQ(FindFavoriteRow({}, "a", 5), -1);
}

}  // namespace
}  // namespace hullrider
