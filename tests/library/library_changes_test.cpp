#include "library/library_changes.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

// Albums of songs by their paths; an album's name is that of its folder.
std::vector<Playlist> Albums(const std::vector<std::vector<std::string>>& albums) {
    std::vector<Playlist> playlists;
    for (const std::vector<std::string>& songs : albums) {
        Playlist& playlist = playlists.emplace_back();
        if (!songs.empty()) playlist.albumName = songs[0].substr(0, songs[0].rfind('/'));
        for (const std::string& path : songs) playlist.songs.push_back({path, 0, 0, 0, kMp3});
    }
    return playlists;
}

std::string Names(const std::vector<Playlist>& playlists) {
    std::string names;
    for (const Playlist& playlist : playlists) names += playlist.albumName + ' ';
    return names;
}

TEST(LibraryChanges, TheSameMusicIsTheSameSongsInTheSameAlbumsAndOrder) {
    const std::vector<Playlist> all = Albums({{"/m/A/1", "/m/A/2"}, {"/m/B/\xC3\xA4", "/m/B/3"}});
    struct {
        std::vector<Playlist> other;
        bool same, sameInCache;
    } const table[] = {{all, true, true},
                       {Albums({{}, {"/m/A/1", "/m/A/2"}, {"/m/B/\xC3\xA4", "/m/B/3"}}), true, true},
                       {Albums({{"/m/A/1", "/m/A/2"}, {"/m/B/3"}}), false, true},
                       {Albums({{"/m/A/1", "/m/A/2"}, {"/m/B/3"}, {"/m/C/\xC3\xA4"}}), false, true},
                       {Albums({{"/m/A/2", "/m/A/1"}, {"/m/B/\xC3\xA4", "/m/B/3"}}), false, false},
                       {Albums({{"/m/B/\xC3\xA4", "/m/B/3"}, {"/m/A/1", "/m/A/2"}}), false, false},
                       {Albums({{"/m/A/1", "/m/A/2"}}), false, false},
                       {Albums({{"/m/A/1"}, {"/m/B/\xC3\xA4", "/m/B/3"}}), false, false}};
    for (const auto& row : table) {
        EXPECT_EQ(IsSameMusic(all, row.other, Compared::kAllSongs), row.same) << Names(row.other);
        EXPECT_EQ(IsSameMusic(row.other, all, Compared::kCachedSongs), row.sameInCache) << Names(row.other);
    }
    std::vector<Playlist> marked = all;
    marked[0].songs[0].favoriteCount = marked[0].isFavorite = 1;
    marked.push_back(Albums({{"/dropped/1"}})[0]);
    marked.back().isQueue = true;
    EXPECT_TRUE(IsSameMusic(all, marked, Compared::kAllSongs));
    marked[0].albumName = "renamed";
    EXPECT_FALSE(IsSameMusic(all, marked, Compared::kAllSongs));
    std::vector<Playlist> typed = all;
    typed[0].songs[0].musicType = kMidi;
    EXPECT_FALSE(IsSameMusic(all, typed, Compared::kAllSongs));
}

TEST(LibraryChanges, AlbumsElsewhereAreThoseInNoneOfTheFolders) {
    std::vector<Playlist> playlists =
        Albums({{"/m/A/1"}, {"/m/A/deep/2"}, {"/M/b/3"}, {"/music/C/4"}, {"C:\\x\\D\\5"}, {}});
    EXPECT_FALSE(HasMusicElsewhere(playlists, {"/m", "/m/A", "/music/", "c:/x"}));
    EXPECT_TRUE(HasMusicElsewhere(playlists, {"/m", "/music", "C:\\x\\"})) << "deeper than an album of /m";
    EXPECT_TRUE(HasMusicOf(playlists, "/music"));
    EXPECT_TRUE(HasMusicOf(playlists, "/music/C"));
    EXPECT_FALSE(HasMusicOf(playlists, "/music/other"));
    DropMusicElsewhere(playlists, {"/m"});
    EXPECT_EQ(Names(playlists), "/m/A /M/b  ");
}

TEST(LibraryChanges, MusicThatCannotBeReadStaysAtItsPlaceAmongTheFolders) {
    const std::vector<Playlist> before =
        Albums({{"/one/A/1"}, {"/two/B/1"}, {"/two/C/1"}, {"/three/D/1"}, {"/three/E/1"}, {"/taken out/F/1"}});
    MusicLibrary found;
    found.playlists = Albums({{"/one/A/1"}, {"/one/new/1"}, {"/three/E/1"}});
    found.missingFolders = {"/two/", "/three/D", "/taken out"};
    KeepMissingMusic(found, before, {"/one", "/two/", "/three"});
    EXPECT_EQ(Names(found.playlists), "/one/A /one/new /two/B /two/C /three/E /three/D ");

    found.playlists = Albums({{"/one/A/1"}});
    found.missingFolders.clear();
    KeepMissingMusic(found, before, {"/one", "/two", "/three"});
    EXPECT_EQ(Names(found.playlists), "/one/A ") << "the others were read and are gone";
}

TEST(LibraryChanges, AlbumsKeepTheirOwnMarks) {
    std::vector<Playlist> before = Albums({{"/m/A/1"}, {"/m/B/1"}});
    before[0].isFavorite = 1;
    before[1].favoriteCount = 4;
    std::vector<Playlist> found = Albums({{"/m/B/2"}, {"/m/A/1"}, {"/m/new/1"}});
    KeepAlbumMarks(found, before);
    std::string marks;
    for (const Playlist& album : found) marks += std::to_string(album.favoriteCount * 10 + album.isFavorite) + ' ';
    EXPECT_EQ(marks, "40 1 0 ");
}

}  // namespace
}  // namespace hullrider
