#include "playback/kept_place.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace hullrider {
namespace {

Playlist Album(const std::vector<std::string>& paths) {
    Playlist album;
    for (const std::string& path : paths) album.songs.emplace_back().songPath = path;
    return album;
}

TEST(KeptPlace, IsFoundAgainByItsPathInAnyCase) {
    AppState app;
    app.library.playlists = {Album({"D:\\A\\1.mp3"}), Album({"D:\\Rock\\1.mp3", "D:\\Rock\\2.mp3"})};
    app.selection.currentPlaylist = 1;
    app.selection.currentSongInPlaylist = 1;
    const KeptPlace place = KeepPlace(app);

    app.library.playlists = {Album({"d:\\ROCK\\0.mp3", "d:\\ROCK\\2.MP3"}), Album({"D:\\Rocky\\2.mp3"})};
    FindPlaceAgain(app, place);
    EXPECT_EQ(app.selection.currentPlaylist, 0);
    EXPECT_EQ(app.selection.currentSongInPlaylist, 1);

    app.library.playlists = {Album({"D:\\A\\1.mp3"}), Album({"D:\\Rocky\\2.mp3"})};
    FindPlaceAgain(app, place);
    EXPECT_EQ(app.selection.currentPlaylist, 0);
    EXPECT_EQ(app.selection.currentSongInPlaylist, -1);

    // Songs of the same folder are queued.
    app.library.playlists.push_back(Album({"D:\\Rock\\2.mp3"}));
    app.library.playlists.back().isQueue = true;
    FindPlaceAgain(app, place);
    EXPECT_EQ(app.selection.currentPlaylist, 0);
}

}  // namespace
}  // namespace hullrider
