#include "library/album_search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

std::vector<std::string> Sorted(std::vector<std::string> folders) {
    std::sort(folders.begin(), folders.end());
    return folders;
}

TEST(AlbumSearch, ArtistsFoldersAreFoundFourLevelsDown) {
    const TemporaryFolder folder;
    for (const char* song : {"M/Bach/Organ/1.mid", "M/Bach/Organ/2.MP3", "M/Bach/Cantatas/1.flac", "M/Abba/Gold/1.m4a",
                             "M/Box/Disc/Deep/Deeper/1.mod", "M/Box/Disc/Deep/Deeper/TooDeep/1.mod",
                             "M/Notes/Only/readme.txt", "M/cover.jpg"}) {
        folder.Write(song, "x");
    }
    const AlbumSearch search = SearchAlbums(folder.At("M"), {});
    EXPECT_TRUE(search.isReadable);
    EXPECT_EQ(Sorted(search.below.folders),
              (std::vector<std::string>{folder.At("M/Abba"), folder.At("M/Bach"), folder.At("M/Box/Disc/Deep")}));
    EXPECT_EQ(search.below.songs, 5);
    EXPECT_EQ(search.ownSongs, 0);
    EXPECT_EQ(search.files, 7);
    EXPECT_TRUE(search.beside.folders.empty());
}

TEST(AlbumSearch, AnAlbumKnowsTheFolderThatHoldsIt) {
    const TemporaryFolder folder;
    for (const char* song : {"M/One/1.mid", "M/One/2.mid", "M/Two/1.mp3", "M/loose.mp3", "M/Two/In/1.mp3"}) {
        folder.Write(song, "x");
    }
    for (const char* album : {"M/One", "M/One/"}) {
        const AlbumSearch search = SearchAlbums(folder.At(album), {});
        EXPECT_EQ(search.ownSongs, 2);
        EXPECT_EQ(search.beside.folders, std::vector<std::string>{folder.At("M")}) << album;
        EXPECT_EQ(search.beside.songs, 3) << "its albums', not what lies loose in it or deeper";
    }
}

TEST(AlbumSearch, AMissingFolderAndOneThatIsGivenUpHoldNothing) {
    const TemporaryFolder folder;
    folder.Write("M/Bach/Organ/1.mid", "x");
    const AlbumSearch missing = SearchAlbums(folder.At("none"), {});
    EXPECT_FALSE(missing.isReadable);
    EXPECT_NE(missing.error, "");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(SearchAlbums(folder.At("M"), stop.get_token()).below.songs, 0);
}

}  // namespace
}  // namespace hullrider
