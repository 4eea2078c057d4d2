#include "library/cache_reader.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

// A cache with one playlist that holds this list of songs.
std::string CacheWithSongs(const std::string& songs) {
    return R"({"playlists":[{"albumName":"A","songs":)" + songs + "}]}";
}

Song OnlySong(const std::string& object) {
    const CacheReading reading = ReadMusicLibraryCache(CacheWithSongs("[" + object + "]"));
    EXPECT_EQ(reading.parseError, "") << object;
    if (reading.playlists.size() != 1 || reading.playlists[0].songs.size() != 1) {
        ADD_FAILURE() << object;
        return {};
    }
    return reading.playlists[0].songs[0];
}

TEST(CacheReader, EveryFieldIsTakenWhateverTheOrderAndWhatElseThereIs) {
    const CacheReading reading = ReadMusicLibraryCache(R"({
        "version": {"playlists": [{"albumName": "no"}], "deep": [[[{"songs": []}]]]},
        "playlists": [
            {"songs": [{"songPath": "/m/a.xm", "extra": {"songPath": "no", "list": [1, {}]}, "playCount": 4,
                        "musicType": 2, "isFavorite": 1, "favoriteCount": 3}],
             "note": ["songs"], "iRadioMode": 5, "albumName": "\u00c4lbum", "isFavorite": 6, "favoriteCount": -7},
            {"albumName": "Empty", "songs": []}
        ],
        "after": {"playlists": []}})");
    ASSERT_TRUE(reading.isCache);
    ASSERT_EQ(reading.playlists.size(), 2U);
    const Playlist& playlist = reading.playlists[0];
    EXPECT_EQ(playlist.albumName, "\xC3\x84lbum");
    EXPECT_EQ(playlist.iRadioMode, 5);
    EXPECT_EQ(playlist.isFavorite, 6);
    EXPECT_EQ(playlist.favoriteCount, -7);
    ASSERT_EQ(playlist.songs.size(), 1U);
    EXPECT_EQ(playlist.songs[0].songPath, "/m/a.xm");
    EXPECT_EQ(playlist.songs[0].playCount, 4);
    EXPECT_EQ(playlist.songs[0].musicType, kTracker);
    EXPECT_EQ(playlist.songs[0].isFavorite, 1);
    EXPECT_EQ(playlist.songs[0].favoriteCount, 3);
    EXPECT_EQ(reading.playlists[1].albumName, "Empty");
}

TEST(CacheReader, AMissingOrWronglyTypedValueIsZeroOrEmpty) {
    for (const char* object : {"{}", R"({"playCount":"4","songPath":7,"isFavorite":true,"favoriteCount":null})",
                               R"({"playCount":[4],"songPath":{"songPath":"x"},"isFavorite":1.0})",
                               R"({"songPath":["x"],"playCount":{"playCount":9},"favoriteCount":1e300})"}) {
        const Song song = OnlySong(object);
        EXPECT_EQ(song.songPath, "") << object;
        EXPECT_EQ(song.playCount, 0) << object;
        EXPECT_EQ(song.isFavorite, 0) << object;
        EXPECT_EQ(song.favoriteCount, 0) << object;
        EXPECT_EQ(song.musicType, kMidi) << object;
    }
}

TEST(CacheReader, NumbersAreCutTo32BitsAndAnUnknownTypeIsDerivedFromTheExtension) {
    const std::pair<const char*, int32_t> numbers[] = {
        {"2147483648", INT32_MAX}, {"18446744073709551615", INT32_MAX}, {"-2147483649", INT32_MIN}};
    for (const auto& [number, expected] : numbers) {
        EXPECT_EQ(OnlySong(R"({"playCount":)" + std::string(number) + "}").playCount, expected) << number;
    }
    EXPECT_EQ(OnlySong(R"({"songPath":"/m/a.MP3","musicType":3})").musicType, kMp3);
    EXPECT_EQ(OnlySong(R"({"musicType":-1,"songPath":"/m/a.it"})").musicType, kTracker);
    EXPECT_EQ(OnlySong(R"({"musicType":0,"songPath":"/m/a.it"})").musicType, kMidi);
}

TEST(CacheReader, SongsThatCannotBePlayedAreDroppedAndTheOthersStay) {
    const CacheReading reading = ReadMusicLibraryCache(CacheWithSongs(
        R"([{"songPath":"a.ogg","musicType":9},{"songPath":"a\u0000.mp3","musicType":1},{"songPath":"b.mp3","musicType":1},
            7,"songs",null,[{"songPath":"no"}]])"));
    ASSERT_EQ(reading.playlists.size(), 1U);
    ASSERT_EQ(reading.playlists[0].songs.size(), 1U);
    EXPECT_EQ(reading.playlists[0].songs[0].songPath, "b.mp3");
    EXPECT_EQ(reading.droppedSongs, 2U);
}

TEST(CacheReader, OfAKeyThatComesTwiceTheLastCounts) {
    const CacheReading reading = ReadMusicLibraryCache(
        R"({"playlists":[{"albumName":"old"}],
            "playlists":[{"albumName":"a","songs":[{"songPath":"x.mp3"}],"songs":[{"songPath":"y.mp3"}],"albumName":"b"}]})");
    ASSERT_EQ(reading.playlists.size(), 1U);
    EXPECT_EQ(reading.playlists[0].albumName, "b");
    ASSERT_EQ(reading.playlists[0].songs.size(), 1U);
    EXPECT_EQ(reading.playlists[0].songs[0].songPath, "y.mp3");
}

TEST(CacheReader, JsonOfAnotherKindIsNoCacheAndNoError) {
    for (const char* text : {"{}", "[]", "null", "7", R"("playlists")", R"({"playlists":{}})", R"({"playlists":null})",
                             R"([{"playlists":[]}])", R"({"a":{"playlists":[{}]}})"}) {
        const CacheReading reading = ReadMusicLibraryCache(text);
        EXPECT_FALSE(reading.isCache || !reading.playlists.empty() || !reading.parseError.empty()) << text;
    }
}

TEST(CacheReader, WhatIsNotJsonGivesNothingButTheParsersMessage) {
    const std::string good = CacheWithSongs(R"([{"songPath":"a.mp3"}])");
    std::vector<std::string> junk{"",
                                  "\0\0",
                                  "playlists",
                                  good + "x",
                                  good + good,
                                  std::string(1'000'000, '['),
                                  R"({"playlists":)" + std::string(1'000'000, '['),
                                  CacheWithSongs("[{\"songPath\":\"\xFF\"}]"),
                                  CacheWithSongs(R"([{"playCount":1e999}])"),
                                  CacheWithSongs("[{\"songPath\":\"" + std::string(100'000, 'x'))};
    for (size_t length = 0; length < good.size(); ++length) junk.push_back(good.substr(0, length));
    for (const std::string& text : junk) {
        const CacheReading reading = ReadMusicLibraryCache(text);
        EXPECT_FALSE(reading.isCache) << text.substr(0, 100);
        EXPECT_TRUE(reading.playlists.empty()) << text.substr(0, 100);
        EXPECT_NE(reading.parseError, "") << text.substr(0, 100);
        EXPECT_LE(reading.parseError.size(), 1000U);
    }
}

// An empty object is a whole record in memory.
TEST(CacheReader, MoreRecordsThanTheTextIsWorthAreRefused) {
    std::string playlists = R"({"playlists":[{})";
    for (int i = 0; i < 200'000; ++i) playlists += ",{}";
    std::string songs = R"([{"songPath":"a.it"})";
    for (int i = 0; i < 300'000; ++i) songs += R"(,{"songPath":"a.it"})";
    for (const std::string& text : {playlists + "]}", CacheWithSongs(songs + "]")}) {
        const CacheReading reading = ReadMusicLibraryCache(text);
        EXPECT_TRUE(reading.playlists.empty());
        EXPECT_FALSE(reading.isCache);
        EXPECT_EQ(reading.parseError, "it would take too much memory");
    }
}

}  // namespace
}  // namespace hullrider
