#include "radio/stations_file.h"

#include <gtest/gtest.h>

#include "radio/recent_stations_file.h"
#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

InternetStation FullStation() {
    return {"N\xC3\xA4me \"x\"", "http://a/b.pls", "Norway", "Oslo", {"rock", "", "pop"}, 1, -3, 7, 9, false, false};
}

TEST(StationsFile, WhatWasSavedIsLoadedInItsOrder) {
    const TemporaryFolder folder;
    const std::string path = folder.At("InternetStations.json");
    InternetStation second;
    second.url = "http://c";
    ASSERT_TRUE(SaveInternetStations(path, {FullStation(), second}));
    std::vector<InternetStation> loaded;
    EXPECT_EQ(LoadInternetStations(path, loaded), StateReading::kWhole);
    ASSERT_EQ(loaded.size(), 2U);
    EXPECT_EQ(InternetStationsText(loaded), InternetStationsText({FullStation(), second}));
    EXPECT_EQ(loaded[0].tags, FullStation().tags);
    EXPECT_NE(folder.Read("InternetStations.json").find("\"favorite\": 0"), std::string::npos) << "not a boolean";
}

TEST(StationsFile, EntriesOfTheOlderFormAreIncludedAndValid) {
    std::vector<InternetStation> stations;
    std::string error;
    const char* const text = R"([{"name":"a","url":"u","favorite":1,"favoriteCount":4,"votes":5,"isIncluded":false},
                                 {"url":"v","tags":[],"votes":5,"isIncluded":false},
                                 {"url":"w","country":7,"isValid":"no","favoriteCount":1e99}])";
    ASSERT_EQ(ReadInternetStations(text, stations, error), StateReading::kWhole) << error;
    EXPECT_EQ(stations[0].favoriteCount, 4);
    EXPECT_EQ(stations[0].votes, 0) << "not of the older form";
    EXPECT_TRUE(stations[0].isIncluded && stations[0].isValid);
    EXPECT_EQ(stations[1].votes, 5);
    EXPECT_TRUE(stations[1].isValid);
    EXPECT_FALSE(stations[1].isIncluded);
    EXPECT_EQ(stations[2].country, "");
    EXPECT_EQ(stations[2].favoriteCount, 0);
}

TEST(StationsFile, WhatIsNoListLeavesTheStationsAlone) {
    std::vector<InternetStation> stations{FullStation()};
    std::string error;
    for (const std::string& text : {std::string(), std::string("{}"), std::string("[{\"url\":\"u\"}"),
                                    std::string(100'000, '['), std::string("\xFF")}) {
        EXPECT_EQ(ReadInternetStations(text, stations, error), StateReading::kUnreadable);
        EXPECT_FALSE(error.empty());
        EXPECT_EQ(stations.size(), 1U);
    }
    const TemporaryFolder folder;
    const std::string path = folder.Write("s.json", R"([3,{"name":"no url"},{"url":"u"}])");
    const ConsoleCapture quiet;
    EXPECT_EQ(LoadInternetStations(path, stations), StateReading::kPartly);
    EXPECT_EQ(stations.size(), 1U);
    EXPECT_EQ(stations[0].url, "u");
    EXPECT_TRUE(folder.Has("s.json.bad"));
    EXPECT_EQ(LoadInternetStations(folder.At("missing.json"), stations), StateReading::kUnreadable);
}

TEST(RecentStationsFile, ComesBackWithoutItsClickCountsAndKeepsTheLastOnes) {
    const TemporaryFolder folder;
    const std::string path = folder.At("RecentStations.json");
    std::vector<DirectoryStation> stations(kMostRecentStations + 1);
    for (size_t i = 0; i < stations.size(); ++i) stations[i].url = "http://" + std::to_string(i);
    stations.back() = {"last", "http://last", "Norway", "Oslo", 5, 6, {"a", "b"}};
    ASSERT_TRUE(SaveRecentStations(path, stations));
    std::vector<DirectoryStation> loaded;
    ASSERT_EQ(LoadRecentStations(path, loaded), StateReading::kWhole);
    ASSERT_EQ(loaded.size(), kMostRecentStations);
    EXPECT_EQ(loaded.front().url, "http://1");
    EXPECT_EQ(loaded.back().votes, 5);
    EXPECT_EQ(loaded.back().clickCount, 0);
    EXPECT_EQ(loaded.back().tags, (std::vector<std::string>{"a", "b"}));
}

}  // namespace
}  // namespace hullrider
