#include "library/scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "platform/folder.h"
#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

namespace fs = std::filesystem;

// Song paths and their types by album; the system's listing order is nobody's promise.
using Found = std::map<std::string, std::map<std::string, int32_t>>;

Found Sorted(const std::vector<Playlist>& playlists) {
    Found found;
    for (const Playlist& playlist : playlists) {
        for (const Song& song : playlist.songs) found[playlist.albumName][song.songPath] = song.musicType;
    }
    return found;
}

TEST(Scan, FoldersDirectlyInsideAreAlbumsAndTheirOwnSupportedFilesAreSongs) {
    const TemporaryFolder music;
    const std::string name = "\xC3\x84 \xE9\x9F\xB3\xE6\xA5\xBD \xF0\x9F\x8E\xB5";
    const Found expected{{"One", {{music.Write("One/Song.MP3", ""), kMp3}, {music.Write("One/tune.mid", ""), kMidi}}},
                         {name, {{music.Write(name + "/a.b" + name + ".S3M", ""), kTracker}}}};
    for (const char* other : {"loose.mp3", "One/song.ogg", "One/notes.txt", "One/.mp3", "One/a.mp3.bak",
                              "One/deeper/song.mp3", "Texts/readme.txt"}) {
        music.Write(other, "");
    }
    fs::create_directories(music.Path() / "Empty");
    fs::create_directories(music.Path() / "One" / "folder.mp3");

    MusicLibrary library;
    library.totalSongs = 100;
    library.playlistCount = 10;
    ConsoleCapture console;
    const std::vector<Playlist> playlists = ScanDirectory(music.At(""), library);  // its own separator is not doubled
    EXPECT_EQ(console.Errors(), "");
    EXPECT_EQ(Sorted(playlists), expected);
    EXPECT_EQ(library.totalSongs, 103);
    EXPECT_EQ(library.playlistCount, 12);
    EXPECT_TRUE(library.playlists.empty());
    for (const Playlist& playlist : playlists) {
        EXPECT_EQ(playlist.songCount, static_cast<int32_t>(playlist.songs.size()));
    }
}

TEST(Scan, WhatIsNoFolderIsOneLineAndNothingElse) {
    const TemporaryFolder music;
    const std::string file = music.Write("file", "");
    for (const std::string& path : {music.At("missing"), file, std::string(), std::string("nul\0byte", 8)}) {
        MusicLibrary library;
        ConsoleCapture console;
        EXPECT_TRUE(ScanDirectory(path, library).empty());
        EXPECT_EQ(console.Errors(), "Directory does not exist or is not a directory: " + path + "\n");
        EXPECT_EQ(library.totalSongs, 0);
    }
}

TEST(Scan, FavoritesFilesAreToldOfTheDirectorysOwnFirstAndAreNoSongs) {
    const TemporaryFolder music;
    const std::string own = music.Write("Favorite.JSON", "{}");
    const std::string album = music.Write("Album/favorite.json", "{}");
    music.Write("Album/a.mp3", "");
    music.Write("Album/myfavorite.json", "{}");
    music.Write("Album/deeper/favorite.json", "{}");
    fs::create_directories(music.Path() / "Folder" / "favorite.json");
    std::vector<std::string> told;
    MusicLibrary library;
    ScanDirectory(music.Text(), library, [&](const std::string& path) { told.push_back(path); });
    EXPECT_EQ(told, (std::vector<std::string>{own, album}));
    EXPECT_EQ(library.totalSongs, 1);
}

TEST(Scan, AnAlbumThatGoesAwayMeanwhileIsOneLineAndTheRestIsScanned) {
    const TemporaryFolder music;
    for (const char* file : {"A/a.mp3", "A/favorite.json", "B/b.mp3", "B/favorite.json"}) music.Write(file, "");
    std::string gone;
    const auto removeTheOther = [&](const std::string& favorites) {
        gone = favorites == music.At("A/favorite.json") ? "B" : "A";
        fs::remove_all(music.Path() / gone);
    };
    MusicLibrary library;
    ConsoleCapture console;
    EXPECT_EQ(ScanDirectory(music.Text(), library, removeTheOther).size(), 1U);
    const std::string errors = console.Errors();
    EXPECT_EQ(errors.find("Failed to read folder: " + music.At(gone) + ": "), 0U) << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    EXPECT_EQ(library.totalSongs, 1);
    EXPECT_EQ(library.missingFolders, std::vector<std::string>{music.At(gone)}) << "its songs are not known to be gone";
}

TEST(Scan, ARescanReplacesThePlaylistsInTheOrderOfTheDirectoriesAndRaisesTheCounters) {
    const TemporaryFolder music;
    music.Write("first/Same/a.mp3", "");
    music.Write("second/Same/b.mp3", "");
    MusicLibrary library;
    for (int scans = 1; scans <= 2; ++scans) {
        ConsoleCapture console;
        ScanMusicFolders(library, {music.At("second"), music.At("missing"), music.At("first")}, {});
        ASSERT_EQ(library.playlists.size(), 2U);
        EXPECT_EQ(library.playlists[0].songs[0].songPath, music.At("second/Same/b.mp3"));
        EXPECT_EQ(library.playlists[1].songs[0].songPath, music.At("first/Same/a.mp3"));
        EXPECT_EQ(library.playlists[0].albumName, library.playlists[1].albumName);
        EXPECT_EQ(library.totalSongs, 2 * scans);
        EXPECT_EQ(library.playlistCount, 2 * scans);
        EXPECT_EQ(library.missingFolders, std::vector<std::string>{music.At("missing")});
    }
}

TEST(Scan, WhatIsGatheredIsTheMusicAmongFilesAndFoldersInTheirOrder) {
    const TemporaryFolder folder;
    for (const char* name :
         {"box/one.mp3", "box/readme.txt", "box/Inner/two.MID", "box/Inner/deeper/three.xm", "b.flac"}) {
        folder.Write(name, "");
    }
    const Playlist one = GatherSongs({folder.At("box")});
    EXPECT_EQ(one.albumName, "box");
    EXPECT_EQ(one.songs.size(), 2U);
    const Playlist all = GatherSongs({folder.At("b.flac"), folder.At("box"), folder.At("missing.mp3")});
    EXPECT_TRUE(all.isQueue);
    ASSERT_EQ(all.songs.size(), 3U);
    EXPECT_EQ(all.songs[0].songPath, folder.At("b.flac"));
    EXPECT_EQ(all.songs[1].songPath, folder.At("box/one.mp3"));
    EXPECT_EQ(all.songs[2].songPath, folder.At("box/Inner/two.MID"));
    EXPECT_EQ(all.songs[2].musicType, kMidi);
}

TEST(Scan, APathLongerThanTheOldLimitIsScanned) {
    const TemporaryFolder music;
    const std::string name(120, 'n');
    const std::string deep = JoinPath(JoinPath(music.Text(), name), name);
    // On Windows the standard library's own calls need the unlimited form of the path.
    const std::string prefix = fs::path::preferred_separator == '\\' ? "\\\\?\\" : "";
    std::vector<fs::path> made{PathFromUtf8(prefix + music.Text())};
    for (int level = 0; level < 3; ++level) {
        made.push_back(made.back() / name);
        ASSERT_TRUE(fs::create_directory(made.back()));
    }
    made.push_back(made.back() / (name + ".mp3"));
    std::ofstream(made.back()) << "x";
    MusicLibrary library;
    const std::vector<Playlist> playlists = ScanDirectory(deep, library);
    const std::string expected = JoinPath(JoinPath(deep, name), name + ".mp3");
    EXPECT_EQ(Sorted(playlists), (Found{{name, {{expected, kMp3}}}}));
    for (; made.size() > 1; made.pop_back()) EXPECT_TRUE(fs::remove(made.back()));
}

#ifndef _WIN32
TEST(Scan, LinksCountAsWhatTheyLeadToAndLoopsEnd) {
    const TemporaryFolder music;
    const std::string outside = music.Write("outside/Album/real.mp3", "");
    const fs::path inside = music.Path() / "inside";
    fs::create_directories(inside / "Album");
    fs::create_symlink(outside, inside / "Album" / "linked.mid");
    fs::create_symlink("nowhere", inside / "Album" / "broken.mp3");
    fs::create_symlink("self.mp3", inside / "Album" / "self.mp3");
    fs::create_symlink("/dev/null", inside / "Album" / "device.mp3");
    fs::create_directory_symlink(inside, inside / "Loop");
    fs::create_directory_symlink(inside / "Album", inside / "Again");
    fs::create_directory_symlink("nowhere", inside / "Broken");
    MusicLibrary library;
    ConsoleCapture console;
    const Found expected{{"Album", {{music.At("inside/Album/linked.mid"), kMidi}}},
                         {"Again", {{music.At("inside/Again/linked.mid"), kMidi}}}};
    EXPECT_EQ(Sorted(ScanDirectory(music.At("inside"), library)), expected);
    EXPECT_EQ(console.Errors(), "");
}
#endif

// A name with no UTF-8 form: an unpaired surrogate on Windows, a stray byte elsewhere.
fs::path NoText() {
    if constexpr (std::is_same_v<fs::path::value_type, wchar_t>) return std::wstring(1, wchar_t{0xD800});
    return std::string("\xFF");
}

TEST(Scan, NamesThatAreNoTextAreReportedAndSkipped) {
    const TemporaryFolder music;
    music.Write("Album/good.mp3", "");
    fs::path file = music.Path() / "Album" / NoText();
    std::ofstream(file += ".mp3") << "";
    std::error_code refused;
    fs::create_directory(music.Path() / NoText(), refused);
    if (refused || !fs::exists(file, refused)) GTEST_SKIP() << "this file system takes no such names";
    MusicLibrary library;
    ConsoleCapture console;
    EXPECT_EQ(ScanDirectory(music.Text(), library).size(), 1U);
    EXPECT_EQ(console.Errors(), "Error processing folder name. Exception: a name in " + music.Text() +
                                    " is not valid text\nFailed to process file: a name in " + music.At("Album") +
                                    " is not valid text\n");
    EXPECT_EQ(library.totalSongs, 1);
}

}  // namespace
}  // namespace hullrider
