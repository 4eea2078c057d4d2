#include "library/favorites_file.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "library/favorites.h"
#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

std::string Element(const std::string& path, int count = 1) {
    return R"({"songType":1,"songIndex":0,"plistIndex":0,"favoriteCount":)" + std::to_string(count) +
           R"(,"songPath":")" + path + "\"}";
}

std::string File(const std::string& elements) {
    return R"({"favorites":[)" + elements + "]}";
}

TEST(FavoritesFile, WhatWasSavedIsLoadedInItsOrder) {
    const TemporaryFolder folder;
    const std::string path = folder.At("favorite.json");
    FavoritesState saved;
    MergeFavorites(saved, {{kTracker, 3, 4, 5, "C:\\M\\\"z\".xm"},
                           {kMidi, -1, -1, 1, "/m/\xC3\xA4.mid"},
                           {kMp3, 0, 0, INT32_MAX, "/m/" + std::string(300, 'x') + ".mp3"}});
    ASSERT_TRUE(SaveFavorites(path, saved));

    const nlohmann::json object = nlohmann::json::parse(folder.Read("favorite.json"));
    ASSERT_EQ(object.size(), 1U);
    const nlohmann::json expected = {
        {"songType", 2}, {"songIndex", 3}, {"plistIndex", 4}, {"favoriteCount", 5}, {"songPath", "C:\\M\\\"z\".xm"}};
    EXPECT_EQ(object["favorites"][0], expected);

    FavoritesState loaded;
    EXPECT_EQ(LoadFavorites(path, loaded), FavoritesLoad::kWhole);
    EXPECT_EQ(loaded.list.size(), 3U);
    EXPECT_EQ(FavoritesText(loaded.list), FavoritesText(saved.list));  // the long path too, uncut
}

TEST(FavoritesFile, AnElementIsTakenByItsPathAndTheRestIsMadeUp) {
    struct {
        const char* element;
        const char* expected;  // type, song, playlist, count, path; empty: dropped
    } const table[] = {
        {R"({"songPath":"/a.mid"})", "0 -1 -1 1 /a.mid"},
        {R"({"songPath":"/a.xm","favoriteCount":-7,"songIndex":-9,"plistIndex":2})", "2 -1 2 -7 /a.xm"},
        {R"({"songPath":"/a.mp3","favoriteCount":0})", "1 -1 -1 1 /a.mp3"},
        {R"({"songPath":"/a.mp3","favoriteCount":99999999999999999999})", "1 -1 -1 1 /a.mp3"},  // no integer to JSON
        {R"({"songPath":"/a.mp3","favoriteCount":99999999999,"songIndex":1e3})", "1 -1 -1 2147483647 /a.mp3"},
        {R"({"songPath":"/a.mp3","favoriteCount":"5","songType":true})", "1 -1 -1 1 /a.mp3"},
        {R"({"songPath":"/a.mp3","more":{"songPath":"/b.mp3","favorites":[{}]}})", "1 -1 -1 1 /a.mp3"},
        {R"({})", ""},
        {R"({"songPath":""})", ""},
        {R"({"songPath":7})", ""},
        {R"({"songPath":["/a.mp3"]})", ""},
        {R"({"songPath":"/a.mp3\u0000.mid"})", ""},
        {R"("/a.mp3")", ""},
        {R"(null)", ""},
        {R"([{"songPath":"/a.mp3"}])", ""},
    };
    for (const auto& row : table) {
        const FavoritesReading reading = ReadFavorites(File(row.element));
        EXPECT_TRUE(reading.isFavorites && reading.error.empty()) << row.element;
        EXPECT_EQ(reading.dropped, *row.expected == '\0' ? 1U : 0U) << row.element;
        std::string entries;
        for (const FavoriteEntry& entry : reading.entries) {
            entries += std::to_string(entry.songType) + ' ' + std::to_string(entry.songIndex) + ' ' +
                       std::to_string(entry.plistIndex) + ' ' + std::to_string(entry.favoriteCount) + ' ' +
                       entry.songPath;
        }
        EXPECT_EQ(entries, row.expected) << row.element;
    }
}

TEST(FavoritesFile, JunkIsNoFavoritesFileAndATornOneGivesWhatItHas) {
    const std::string a = Element("/a.mp3");
    const std::string junk[] = {"",
                                "null",
                                "[]",
                                "{}",
                                "[" + File(a) + "]",
                                R"({"favorites":null})",
                                R"({"favorites":{"0":)" + a + "}}",
                                R"({"other":{"favorites":[)" + a + "]}}",
                                R"({"other":[)" + a + "]}",
                                std::string(100'000, '['),
                                "{\"favorites\":" + std::string(100'000, '{'),
                                std::string("\xFF\xFE{\0}\0", 6)};
    for (const std::string& text : junk) {
        const FavoritesReading reading = ReadFavorites(text);
        EXPECT_FALSE(reading.isFavorites || !reading.entries.empty() || reading.error.empty()) << text.substr(0, 40);
    }
    const std::string whole = File(Element("/a.mp3") + "," + Element("/b.mp3"));
    const FavoritesReading torn = ReadFavorites(whole.substr(0, whole.size() - 10));
    EXPECT_TRUE(torn.isFavorites);
    EXPECT_FALSE(torn.error.empty());
    ASSERT_EQ(torn.entries.size(), 1U);
    EXPECT_EQ(torn.entries[0].songPath, "/a.mp3");
}

TEST(FavoritesFile, ThePlayersOwnCountsGoBeforeThoseFoundEarlier) {
    const TemporaryFolder folder;
    FavoritesState favorites;
    ConsoleCapture console;
    LoadFavorites(folder.Write("album/Favorite.json", File(Element("/a.mp3", 1) + "," + Element("/b.mp3", 2))),
                  favorites);
    const std::string own = folder.Write("favorite.json", File(Element("/c.mp3") + "," + Element("/A.mp3", 9)));
    EXPECT_EQ(LoadOwnFavorites(own, favorites), FavoritesLoad::kWhole);
    ASSERT_EQ(favorites.list.size(), 3U);
    EXPECT_EQ(favorites.list[1].favoriteCount, 9);
    EXPECT_EQ(favorites.list[2].songPath, "/b.mp3");
    EXPECT_FALSE(folder.Has("favorite.json.bad"));
    EXPECT_EQ(console.Errors(), "");
}

TEST(FavoritesFile, AFileOfTheUsersIsLeftAloneAndThePlayersOwnIsKeptBeforeASave) {
    const TemporaryFolder folder;
    FavoritesState favorites;
    const std::string text = File(Element("/a.mp3") + ",7");
    const std::string path = folder.Write("favorite.json", text);
    EXPECT_EQ(LoadFavorites(path, favorites), FavoritesLoad::kPartly);
    EXPECT_FALSE(folder.Has("favorite.json.bad"));
    EXPECT_EQ(LoadOwnFavorites(path, favorites), FavoritesLoad::kPartly);
    EXPECT_TRUE(SaveFavorites(path, favorites));
    EXPECT_EQ(folder.Read("favorite.json.bad"), text);

    ConsoleCapture console;
    const std::string missing = folder.At("missing/favorite.json");
    EXPECT_EQ(LoadOwnFavorites(missing, favorites), FavoritesLoad::kUnreadable);
    EXPECT_FALSE(SaveFavorites(missing, favorites));
    EXPECT_EQ(console.Errors(),
              "Failed to open " + missing + " for reading.\nFailed to open " + missing + " for writing.\n");
    EXPECT_EQ(favorites.list.size(), 1U);
}

}  // namespace
}  // namespace hullrider
