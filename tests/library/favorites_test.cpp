#include "library/favorites.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

FavoriteEntry Entry(const std::string& path, int32_t count = 1) {
    FavoriteEntry entry;
    entry.songPath = path;
    entry.favoriteCount = count;
    return entry;
}

std::string Names(const FavoritesState& favorites) {
    std::string names;
    for (const FavoriteEntry& entry : favorites.list) {
        names += entry.songPath + ':' + std::to_string(entry.favoriteCount) + ' ';
    }
    return names;
}

// Two albums; the second one holds the first one's song again, in other letters.
MusicLibrary SmallLibrary() {
    MusicLibrary library;
    library.playlists.resize(2);
    library.playlists[0].songs = {{"/m/a.mp3", 0, 0, 0, kMp3}, {"/m/b.mid", 0, 0, 0, kMidi}};
    library.playlists[1].songs = {{"/m/c.xm", 0, 0, 0, kTracker}, {"/M/A.mp3", 0, 0, 0, kMp3}};
    return library;
}

// Each song's two marks.
std::string Marks(const MusicLibrary& library) {
    std::string marks;
    for (const Playlist& playlist : library.playlists) {
        for (const Song& song : playlist.songs) {
            marks += std::to_string(song.isFavorite) + std::to_string(song.favoriteCount) + ' ';
        }
    }
    return marks;
}

// Whatever was done, the index finds each entry at its place and nothing else.
void ExpectIndexed(const FavoritesState& favorites) {
    EXPECT_EQ(favorites.byPath.size(), favorites.list.size());
    for (const auto& [path, place] : favorites.byPath) {
        ASSERT_LT(place, favorites.list.size());
        EXPECT_TRUE(IsSameFavorite(favorites.list[place], Entry(path)));
    }
}

TEST(Favorites, MergingAddsOnlyWhatIsNewWhateverItsLetters) {
    FavoritesState favorites;
    const std::vector<FavoriteEntry> entries{Entry("/m/A.mp3", 3), Entry("/M/a.MP3", 5), Entry("/m/b.mp3")};
    MergeFavorites(favorites, entries);
    MergeFavorites(favorites, entries);
    MergeFavorites(favorites, {Entry("/m/B.mp3", 9), Entry("/m/c.mp3", 2)});
    EXPECT_EQ(Names(favorites), "/m/A.mp3:3 /m/b.mp3:1 /m/c.mp3:2 ");
    ExpectIndexed(favorites);
    EXPECT_FALSE(IsSameFavorite(Entry("/m/\xC3\x84"), Entry("/m/\xC3\xA4")));  // by bytes: A with dots stays apart
    EXPECT_FALSE(IsSameFavorite(Entry("/m/a"), Entry("/m/ab")));
}

TEST(Favorites, TheListAndTheLibraryFindEachOther) {
    FavoritesState favorites;
    MusicLibrary library = SmallLibrary();
    MergeFavorites(favorites, {Entry("/m/A.MP3", 3), Entry("/gone.mp3", 2), Entry("/m/c.xm")});
    library.playlists[0].songs[1].isFavorite = 1;  // from a time when it was one
    MatchFavorites(favorites, library);
    EXPECT_EQ(Marks(library), "13 00 11 13 ");
    EXPECT_EQ(favorites.list[0].plistIndex, 0);  // the first song of that path
    EXPECT_EQ(favorites.list[0].songIndex, 0);
    EXPECT_EQ(favorites.list[0].songType, kMp3);
    EXPECT_EQ(favorites.list[1].plistIndex, -1);
    EXPECT_EQ(favorites.list[2].plistIndex, 1);
    EXPECT_EQ(favorites.list[2].songType, kTracker);

    // A scan that finds the albums the other way round.
    library = SmallLibrary();
    std::swap(library.playlists[0], library.playlists[1]);
    MatchFavorites(favorites, library);
    EXPECT_EQ(Marks(library), "11 13 13 00 ");
    EXPECT_EQ(favorites.list[0].songIndex, 1);
    EXPECT_EQ(favorites.list[2].plistIndex, 0);
    EXPECT_EQ(favorites.list.size(), 3U);
}

TEST(Favorites, EitherMarkOfASongMakesItAFavoriteWhenTheListIsLost) {
    FavoritesState favorites;
    MusicLibrary library = SmallLibrary();
    library.playlists[0].songs[0].isFavorite = 1;
    library.playlists[0].songs[1].favoriteCount = 4;
    library.playlists[1].songs[0].favoriteCount = -1;
    AdoptFavorites(favorites, library);
    EXPECT_EQ(Names(favorites), "/m/a.mp3:1 /m/b.mid:4 ");
    ExpectIndexed(favorites);

    favorites = {};
    library.playlists[0].songs[0].favoriteCount = -2;
    AdoptFavorites(favorites, library);
    MatchFavorites(favorites, library);
    EXPECT_EQ(library.playlists[0].songs[0].isFavorite, 1);
    EXPECT_EQ(library.playlists[0].songs[0].favoriteCount, -2) << "never drawn, and not twice as often";
}

TEST(Favorites, ACountIsSetByPathAlsoOfWhatIsNotInTheLibrary) {
    FavoritesState favorites;
    MusicLibrary library = SmallLibrary();
    MergeFavorites(favorites, {Entry("/gone.mp3", 2), Entry("/m/a.mp3", 3)});
    MatchFavorites(favorites, library);
    SetFavoriteCountAt(favorites, library, "/GONE.mp3", 5);
    SetFavoriteCountAt(favorites, library, "/m/A.mp3", 4);
    SetFavoriteCountAt(favorites, library, "/m/b.mid", 9);  // is none
    EXPECT_EQ(Names(favorites), "/gone.mp3:5 /m/a.mp3:4 ");
    EXPECT_EQ(Marks(library), "14 00 00 14 ");
    SetFavoriteCountAt(favorites, library, favorites.list[0].songPath, 0);
    SetFavoriteCountAt(favorites, library, favorites.list[0].songPath, -1);
    EXPECT_EQ(Names(favorites), "");
    EXPECT_EQ(Marks(library), "00 00 00 00 ");
    ExpectIndexed(favorites);
}

TEST(Favorites, ACountIsSetInTheListAndInEverySongOfThatPath) {
    FavoritesState favorites;
    MusicLibrary library = SmallLibrary();
    SetFavoriteCount(favorites, library, {1, 1}, 2);
    SetFavoriteCount(favorites, library, {0, 1}, 1);
    SetFavoriteCount(favorites, library, {1, 0}, 7);
    EXPECT_EQ(Names(favorites), "/M/A.mp3:2 /m/b.mid:1 /m/c.xm:7 ");
    EXPECT_EQ(Marks(library), "12 11 17 12 ");

    SetFavoriteCount(favorites, library, {0, 0}, 0);
    EXPECT_EQ(Names(favorites), "/m/b.mid:1 /m/c.xm:7 ");
    EXPECT_EQ(Marks(library), "00 11 17 00 ");
    ExpectIndexed(favorites);
    SetFavoriteCount(favorites, library, {0, 1}, INT32_MIN);
    SetFavoriteCount(favorites, library, {1, 0}, INT32_MAX);
    EXPECT_EQ(Names(favorites), "/m/c.xm:2147483647 ");
    ExpectIndexed(favorites);

    for (const SongPosition nowhere : {SongPosition{-1, 0}, {0, -1}, {2, 0}, {0, 2}, {INT32_MAX, INT32_MAX}}) {
        SetFavoriteCount(favorites, library, nowhere, 3);
    }
    EXPECT_EQ(favorites.list.size(), 1U);

    ClearFavorites(favorites, library);
    EXPECT_TRUE(favorites.list.empty() && favorites.byPath.empty());
    EXPECT_EQ(Marks(library), "00 00 00 00 ");
}

}  // namespace
}  // namespace hullrider
