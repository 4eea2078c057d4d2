#include "library/cache.h"

#include <gtest/gtest.h>

#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

MusicLibrary SmallLibrary() {
    MusicLibrary library;
    Playlist playlist;
    playlist.albumName = "Quote \" \\ \xC3\xA4";
    playlist.iRadioMode = 1;
    playlist.favoriteCount = 2;
    playlist.isFavorite = 3;
    playlist.songs = {{"C:\\Music\\a \"b\".mp3", 1, 5, 7, kMp3}, {"/music/b.mid", 0, 0, -1, kMidi}};
    library.playlists = {playlist, {}};
    return library;
}

TEST(Cache, WhatWasSavedIsLoaded) {
    const TemporaryFolder folder;
    const std::string path = folder.At("cache.json");
    folder.Write("cache.json", "old");
    folder.Write("cache.json.temp", "left over from an interrupted save");
    ConsoleCapture console;
    MusicLibrary library = SmallLibrary();
    library.playlists.insert(library.playlists.begin(), Playlist{"dropped", {}, 0, 0, 0, 0, true});
    ASSERT_TRUE(SaveMusicLibraryCache(path, library));
    EXPECT_EQ(console.Output(), "Successfully saved cache to " + path + "\n");
    EXPECT_FALSE(folder.Has("cache.json.temp"));
    // The keys stand in alphabetical order.
    const std::string text = R"({"playlists":[
{"albumName":"Quote \" \\ )"
                             "\xC3\xA4"
                             R"(","favoriteCount":2,"iRadioMode":1,"isFavorite":3,"songs":[
{"favoriteCount":7,"isFavorite":1,"musicType":1,"playCount":5,"songPath":"C:\\Music\\a \"b\".mp3"},
{"favoriteCount":-1,"isFavorite":0,"musicType":0,"playCount":0,"songPath":"/music/b.mid"}]},
{"albumName":"","favoriteCount":0,"iRadioMode":0,"isFavorite":0,"songs":[]}]}
)";
    EXPECT_EQ(folder.Read("cache.json"), text);

    MusicLibrary loaded;
    loaded.playlists = LoadMusicLibraryCache(path);
    EXPECT_EQ(console.Errors(), "");
    ASSERT_TRUE(SaveMusicLibraryCache(path, loaded));
    EXPECT_EQ(folder.Read("cache.json"), text);
}

TEST(Cache, SongsWithAPathOutsideAsciiAreLeftOutAndTheirPlaylistStays) {
    const TemporaryFolder folder;
    MusicLibrary library;
    library.playlists.resize(2);
    library.playlists[0].songs = {{"/m/\xC3\xA4.mp3", 0, 0, 0, kMp3}};
    library.playlists[1].songs = {
        {"/m/\xC3\xA4.mp3", 0, 0, 0, kMp3}, {"/m/a.mp3", 0, 0, 0, kMp3}, {"/m/\x80.mp3", 0, 0, 0, kMp3}};
    library.playlists[1].albumName = "not text \xFF";
    ConsoleCapture console;
    ASSERT_TRUE(SaveMusicLibraryCache(folder.At("cache.json"), library));
    const std::vector<Playlist> loaded = LoadMusicLibraryCache(folder.At("cache.json"));
    EXPECT_EQ(console.Errors(), "");
    ASSERT_EQ(loaded.size(), 2U);
    EXPECT_TRUE(loaded[0].songs.empty());
    ASSERT_EQ(loaded[1].songs.size(), 1U);
    EXPECT_EQ(loaded[1].songs[0].songPath, "/m/a.mp3");
}

TEST(Cache, AnEmptyLibraryLeavesTheOldCache) {
    const TemporaryFolder folder;
    folder.Write("cache.json", "old");
    ConsoleCapture console;
    MusicLibrary dropped;
    dropped.playlists.push_back({"dropped", {{"/m/a.mp3", 0, 0, 0, kMp3}}, 0, 0, 0, 0, true});
    for (const MusicLibrary& nothing : {MusicLibrary(), dropped}) {
        EXPECT_FALSE(SaveMusicLibraryCache(folder.At("cache.json"), nothing));
    }
    const std::string error = "Error: No valid data to save. Aborting file write.\n";
    EXPECT_EQ(console.Errors(), error + error);
    EXPECT_EQ(folder.Read("cache.json"), "old");
}

TEST(Cache, AFailedSaveSaysWhereItFailedAndLeavesTheOldCache) {
    const TemporaryFolder folder;
    folder.Write("taken/cache.json", "old");
    std::filesystem::create_directory(folder.Path() / "taken" / "cache.json.temp");
    folder.Write("folder.json/inside", "");
    std::vector<std::pair<std::string, std::string>> table = {
        {folder.At("missing/cache.json"), "Error: Unable to open temporary file for writing.\n"},
        {folder.At("taken/cache.json"), "Error: Unable to open temporary file for writing.\n"},
        {folder.At("folder.json"), "Error: Failed to rename temporary file to cache file. "}};
#ifdef __linux__
    folder.Write("full/cache.json", "old");
    std::filesystem::create_symlink("/dev/full", folder.Path() / "full" / "cache.json.temp");
    table.emplace_back(folder.At("full/cache.json"), "Error: Failed to write to temporary file.\n");
#endif
    for (const auto& [path, message] : table) {
        ConsoleCapture console;
        EXPECT_FALSE(SaveMusicLibraryCache(path, SmallLibrary()));
        const std::string errors = console.Errors();
        EXPECT_EQ(errors.substr(0, message.size()), message);
        EXPECT_GT(errors.size(), message.back() == '\n' ? 0 : message.size() + 1) << "the system's text is missing";
        EXPECT_EQ(console.Output(), "");
    }
    EXPECT_EQ(folder.Read("taken/cache.json"), "old");
    EXPECT_TRUE(folder.Has("folder.json/inside"));
}

TEST(Cache, AFileThatIsNoCacheIsKeptBesideBeforeASaveReplacesIt) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("cache.json", R"({"playlists":[{"albumName":"A")");
    {
        ConsoleCapture console;
        EXPECT_TRUE(LoadMusicLibraryCache(path).empty());
        const std::string errors = console.Errors();
        EXPECT_EQ(errors.find("JSON parsing error: [json.exception.parse_error.101] parse error at line 1, column "),
                  0U);
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1);
        EXPECT_TRUE(SaveMusicLibraryCache(path, SmallLibrary()));
    }
    EXPECT_EQ(folder.Read("cache.json.bad"), R"({"playlists":[{"albumName":"A")");

    {
        ConsoleCapture console;
        EXPECT_TRUE(LoadMusicLibraryCache(folder.Text()).empty());
        EXPECT_EQ(console.Errors(), "Unable to open file: " + folder.Text() + "\n");
    }
    {
        const std::string never = R"({"playlists":[{"songs":[{"songPath":"a.ogg","musicType":9}]}]})";
        ConsoleCapture console;
        EXPECT_EQ(LoadMusicLibraryCache(folder.Write("never.json", never)).size(), 1U);
        EXPECT_EQ(console.Errors(), "Left out of the cache, never playable: 1 songs\n");
    }
    const std::string other = folder.Write("other.json", R"({"stations":[]})");
    ConsoleCapture console;
    EXPECT_TRUE(LoadMusicLibraryCache(other).empty());
    EXPECT_EQ(console.Errors(), "");
    EXPECT_TRUE(folder.Has("other.json.bad"));
}

}  // namespace
}  // namespace hullrider
