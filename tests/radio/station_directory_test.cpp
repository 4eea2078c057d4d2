#include "radio/station_directory.h"

#include <gtest/gtest.h>

#include <map>

#include "radio/directory_queries.h"
#include "tests/console_capture.h"

namespace hullrider {
namespace {

constexpr char kMirror[] = "https://one";

// Answers in the directory's place. URLs without an answer fail.
class Directory {
public:
    HttpFetch Fetch() {
        return [this](const HttpRequest& request, const std::stop_token& stop) {
            asked_.push_back(request);
            HttpResponse response;
            if (stop.stop_requested()) {
                response.end = HttpEnd::kCanceled;
                return response;
            }
            const auto answer = answers_.find(request.url);
            if (answer == answers_.end()) return response;
            response.end = HttpEnd::kComplete;
            response.body = answer->second;
            return response;
        };
    }

    void Answer(const std::string& url, const std::string& body) { answers_[url] = body; }
    const std::vector<HttpRequest>& Asked() const { return asked_; }

private:
    std::map<std::string, std::string> answers_;
    std::vector<HttpRequest> asked_;
};

class StationDirectoryTest : public testing::Test {
protected:
    StationDirectoryTest() { directory_.Answer(kMirror, ""); }

    std::vector<DirectoryStation> Search(const std::string& text, bool expandWords = false) {
        std::vector<DirectoryStation> found;
        client_.SearchStations(
            text, expandWords,
            [&](std::vector<DirectoryStation> stations) {
                found.insert(found.end(), stations.begin(), stations.end());
            },
            stop_.get_token());
        return found;
    }

    ConsoleCapture console_;
    Directory directory_;
    int64_t now_ = 1000;
    std::stop_source stop_;
    StationDirectoryClient client_{{"https://dead", kMirror}, [this] { return directory_.Fetch(); }, [this] { return now_; }};
};

TEST_F(StationDirectoryTest, OnlyMirrorsThatAnswerTheProbeArePicked) {
    for (now_ = 0; now_ < 50; ++now_) EXPECT_EQ(client_.PickMirror(stop_.get_token()), kMirror);
    ASSERT_EQ(directory_.Asked().size(), 2U) << "probed once";
    EXPECT_TRUE(directory_.Asked()[0].isHead);
    EXPECT_EQ(directory_.Asked()[0].wholeTimeout, std::chrono::seconds(5));
}

TEST_F(StationDirectoryTest, AMirrorStaysTheSameWithinASecond) {
    directory_.Answer("https://dead", "");
    std::map<std::string, int> picked;
    for (now_ = 0; now_ < 100; ++now_) {
        const std::string mirror = client_.PickMirror(stop_.get_token());
        EXPECT_EQ(client_.PickMirror(stop_.get_token()), mirror);
        ++picked[mirror];
    }
    EXPECT_EQ(picked.size(), 2U);
}

TEST_F(StationDirectoryTest, WordsAndTheirPairsAreSearchedInByteOrder) {
    EXPECT_EQ(SearchQueries("jazz radio", true), (std::set<std::string>{"jazz", "jazz radio", "radio", "radio jazz"}));
    EXPECT_EQ(SearchQueries("jazz radio", false), (std::set<std::string>{"jazz radio"}));
    EXPECT_EQ(RequestUrls("https://m", "a b/\xC3\xA4"),
              (std::vector<std::string>{"https://m/json/stations/search?name=a%20b%2F%C3%A4&limit=300",
                                        "https://m/json/stations/bytag/a%20b%2F%C3%A4?limit=300"}));
}

TEST_F(StationDirectoryTest, StationsComeOnceInTheDirectorysOrder) {
    directory_.Answer("https://one/json/stations/search?name=jazz&limit=300",
                      R"([{"name":"A","url":"http://a","tags":"rock,pop","votes":3,"clickcount":4,"country":"Norway"},
                          7, {"name":"again","url":"http://a"}, {"url":"http://v.m3u8"}, {"url":"http://l.m3u"}])");
    directory_.Answer("https://one/json/stations/bytag/jazz?limit=300",
                      R"([{"url":"http://b"}, {"url":"http://l.m3u"}, {"url":5}, {"url":"http://c","tags":7}])");
    const std::vector<DirectoryStation> found = Search("jazz");
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[0].name, "A");
    EXPECT_EQ(found[0].tags, (std::vector<std::string>{"rock", "pop"}));
    EXPECT_EQ(found[0].votes + found[0].clickCount, 7);
    EXPECT_EQ(found[1].url, "http://l.m3u");
    EXPECT_EQ(found[2].url, "http://b");
    EXPECT_TRUE(found[3].tags.empty());
    EXPECT_EQ(directory_.Asked().back().userAgent, "libcurl-agent/1.0");
    EXPECT_EQ(directory_.Asked().back().wholeTimeout.count(), 0);
}

TEST_F(StationDirectoryTest, AFailureIsALineAndTheNextRequestGoesOn) {
    directory_.Answer("https://one/json/stations/search?name=jazz&limit=300", std::string(100'000, '['));
    EXPECT_TRUE(Search("jazz").empty());
    const std::string output = console_.Errors();
    EXPECT_NE(output.find("JSON parse error: "), std::string::npos);
    EXPECT_NE(output.find("Failed to fetch data from the server"), std::string::npos);
}

TEST_F(StationDirectoryTest, ShortTextsAndStoppedSearchesAskNothing) {
    EXPECT_TRUE(Search("ab").empty());
    EXPECT_TRUE(directory_.Asked().empty());
    stop_.request_stop();
    EXPECT_TRUE(Search("jazz radio", true).empty());
    EXPECT_LE(directory_.Asked().size(), 2U) << "at most the probes";
    EXPECT_EQ(console_.Errors(), "");
}

TEST_F(StationDirectoryTest, TextsOfAStationAreBounded) {
    directory_.Answer("https://one/json/stations/search?name=jazz&limit=300",
                      R"([{"url":"http://a","name":")" + std::string(500'000, 'n') + R"(","tags":")" +
                          std::string(100'000, ',') + "\"}]");
    const std::vector<DirectoryStation> found = Search("jazz");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_LE(found[0].name.size(), 1024U);
    EXPECT_LE(found[0].tags.size(), 100U);
}

}  // namespace
}  // namespace hullrider
