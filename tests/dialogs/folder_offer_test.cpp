#include "dialogs/folder_offer.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

AlbumSearch Tree(std::vector<std::string> folders, int64_t songs) {
    AlbumSearch search;
    search.isReadable = true;
    search.files = songs + 1;
    search.below = {std::move(folders), songs};
    return search;
}

AlbumSearch Album(const std::string& parent, int64_t ownSongs, int64_t songsBeside) {
    AlbumSearch search;
    search.isReadable = true;
    search.files = search.ownSongs = ownSongs;
    if (!parent.empty()) search.beside = {{parent}, songsBeside};
    return search;
}

TEST(FolderOffer, AFolderWithoutSongsSaysWhyAndOffersWhatWouldWork) {
    AlbumSearch unreadable;
    unreadable.error = "no access";
    AlbumSearch empty = Tree({}, 0), others = Tree({}, 0);
    empty.files = 0;
    AlbumSearch looseSongs = Tree({"D:\\M\\A", "D:\\M\\B"}, 500);
    looseSongs.ownSongs = 3;
    looseSongs.beside = {{"D:\\"}, 3};
    const std::string longParent = "D:\\" + std::string(60, 'x') + "\\Music\\MIDI";
    const struct {
        const char* what;
        AlbumSearch search;
        const char *remark, *button;
        size_t folders;
    } table[] = {{"artists", Tree({"D:\\M\\A", "D:\\M\\B"}, 1234), "deeper", "Add these 2 folders (1,234 songs)", 2},
                 {"one artist", Tree({"D:\\M\\A"}, 1), "deeper", "Add D:\\M\\A (1 song)", 1},
                 {"an album", Album("Z:\\Music\\MIDI", 12, 412), "an album itself",
                  "Add Z:\\Music\\MIDI, which holds this album (412 songs)", 1},
                 {"an album far down", Album(longParent, 12, 412), "an album itself",
                  "Add ...\\Music\\MIDI, which holds this album (412 songs)", 1},
                 {"a few loose songs above artists", looseSongs, "deeper", "Add these 2 folders (500 songs)", 2},
                 {"an album in a listed folder", Album("D:/listed/", 12, 12), "which is in the list", "", 0},
                 {"a drive that is an album", Album("", 12, 0), "Move it into a folder", "", 0},
                 {"artists that are listed", Tree({"D:\\LISTED"}, 9), "are in the list", "", 0},
                 {"an unreadable folder", unreadable, "cannot be read: no access", "", 0},
                 {"an empty folder", empty, "empty", "", 0},
                 {"other files", others, "None of its files", "", 0}};
    for (const auto& row : table) {
        const FolderOffer offer = MakeFolderOffer(row.search, {"D:\\listed"});
        EXPECT_NE(offer.remark.find(row.remark), std::string::npos) << row.what << ": " << offer.remark;
        EXPECT_EQ(offer.button, row.button) << row.what;
        EXPECT_EQ(offer.folders.size(), row.folders) << row.what;
    }
}

TEST(FolderOffer, ALongPathLosesItsBeginningAndNoHalfLetters) {
    EXPECT_EQ(ShortPath("D:\\a", 4), "D:\\a");
    EXPECT_EQ(ShortPath("D:\\first\\second\\third", 8), "...\\third");
    EXPECT_EQ(ShortPath("abc\xC3\xA4"
                        "defg",
                        5),
              "...defg");
}

}  // namespace
}  // namespace hullrider
