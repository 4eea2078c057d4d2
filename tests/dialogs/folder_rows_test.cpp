#include "dialogs/folder_rows.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

MusicLibrary LibraryOf(const std::vector<std::string>& firstSongs) {
    MusicLibrary library;
    for (const std::string& path : firstSongs) {
        Playlist& playlist = library.playlists.emplace_back();
        playlist.songs.resize(2);
        playlist.songs[0].songPath = path;
    }
    return library;
}

TEST(FolderRows, CountTheAlbumsThatLieDirectlyInEachFolder) {
    MusicLibrary library = LibraryOf({"D:\\Music\\A\\1.mp3", "d:\\music\\B\\1.mp3", "D:\\Music\\B\\Deep\\1.mp3",
                                      "D:\\Musical\\C\\1.mp3", "E:\\C\\1.mp3"});
    library.missingFolders = {"F:\\Away"};
    const std::vector<std::string> folders{"D:\\Music\\", "D:/Music/B", "E:\\", "F:\\Away", "G:\\Empty"};
    const std::vector<FolderRow> rows = MakeFolderRows(folders, library, false);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows[0].holds, "2 albums, 4 songs");
    EXPECT_EQ(rows[1].holds, "1 album, 2 songs");
    EXPECT_EQ(rows[2].holds, "1 album, 2 songs");
    EXPECT_EQ(rows[3].holds, "Not found");
    EXPECT_EQ(rows[4].holds, "No songs");
    EXPECT_TRUE(rows[0].remark.empty());
    EXPECT_NE(rows[4].remark, rows[3].remark);
    EXPECT_TRUE(rows[4].isEmpty) << "worth a look further down";
    EXPECT_FALSE(rows[0].isEmpty || rows[3].isEmpty);
    EXPECT_FALSE(MakeFolderRows(folders, library, true)[4].isEmpty) << "the scan is not over";
    library.missingFolders = {"E:\\"};
    EXPECT_NE(MakeFolderRows(folders, library, false)[2].remark.find("Its songs stay"), std::string::npos);
    EXPECT_EQ(MakeFolderRows(folders, library, true)[4].holds, "Scanning");
    EXPECT_EQ(LibraryText(std::nullopt, library), "In the library: 5 albums, 10 songs");
    EXPECT_EQ(LibraryText(1, library), "Scanning: 1 song so far");
}

TEST(FolderRows, AFolderIsRefusedOrRemarkedUpon) {
    const std::vector<std::string> folders{"D:\\Music\\Rock", "E:\\"};
    const struct {
        const char* added;
        bool isThere, isTaken;
        const char* remark;  // what it contains; empty: nothing is said
    } cases[] = {{"D:\\Music\\Jazz", true, true, ""},
                 {"D:\\Music\\Rock'n'Roll", true, true, ""},
                 {"d:/music/ROCK/", true, false, "already"},
                 {"D:\\Nowhere", false, false, "no such folder"},
                 {"D:\\Music\\Rock\\80s", true, true, "inside D:\\Music\\Rock"},
                 {"D:\\", true, true, "keeps its albums: D:\\Music\\Rock"},
                 {"E:\\Songs", true, true, "inside E:\\"},
                 {"E:", true, false, "already"}};
    for (const auto& one : cases) {
        const FolderVerdict verdict = JudgeFolder(folders, one.added, one.isThere);
        EXPECT_EQ(verdict.isTaken, one.isTaken) << one.added;
        EXPECT_NE(verdict.remark.find(one.remark), std::string::npos) << one.added << ": " << verdict.remark;
        EXPECT_EQ(verdict.remark.empty(), *one.remark == '\0') << one.added << ": " << verdict.remark;
    }
}

TEST(FolderRows, MoveWithinTheListOnly) {
    std::vector<std::string> folders{"a", "b", "c"};
    EXPECT_FALSE(MoveFolder(folders, 0, -1));
    EXPECT_FALSE(MoveFolder(folders, 2, 1));
    EXPECT_FALSE(MoveFolder(folders, 3, -1));
    EXPECT_TRUE(MoveFolder(folders, 2, -1));
    EXPECT_TRUE(MoveFolder(folders, 0, 1));
    EXPECT_EQ(folders, (std::vector<std::string>{"c", "a", "b"}));
}

}  // namespace
}  // namespace hullrider
